#include "session/session_control.h"

#include <algorithm>

#include "game/product.h"
#include "game/style.h"
#include "text/text.h"
#include "text/text_number.h"

namespace session {

namespace {
// Error codes that concern the room: their text goes to the room status.
bool IsRoomError(int code) {
    return code == 18 || code == 24 || code == 46 || code == 50 || code == 51 || code == 74;
}
}  // namespace

std::string BuildProfileHeader() {
    return "<html><body bgcolor=black><font color=white><b>" + std::string(game::kProductTitle) +
           "</b><br><br>" + "Created By Zelvar" +
           "<br>Available at: " + std::string(game::kProductSite) + "<br><br>" + "<a href=\"" +
           std::string(game::kProductDownload) + "\">DOWNLOAD NOW</a>";
}

SessionControl::SessionControl(oscar::TolSock& client, game::Game& game,
                               game::ChatCommands& commands, game::Console& console,
                               game::OperatorDialogs& dialogs)
    : client_(client),
      game_(game),
      commands_(commands),
      console_(console),
      dialogs_(dialogs),
      profileHeader_(BuildProfileHeader()) {}

void SessionControl::Note(const std::string& text) {
    dialogs_.ShowMessage(text, "Note", game::MessageKind::Warning);
}

void SessionControl::SetInfo(std::string text) {
    lblInfo_ = std::move(text);
    Changed();
}

void SessionControl::SetChatStatus(std::string text) {
    lblChatStatus_ = std::move(text);
    Changed();
}

void SessionControl::cmdSignOn_Click(const SignOnFields& f) {
    const std::string sn = text::TrimSpaces(f.txtSN);
    if (game_.SignedOn) return Note("You are already signed on!");
    if (sn.empty()) return Note("You must enter in a screenname!");
    if (text::TrimSpaces(f.txtPW).empty()) return Note("You must enter in a password!");
    if (sn.size() < 2) return Note("Screennames must be 2 or more characters long!");
    if (text::TrimSpaces(f.cmbServers).empty()) return Note("You must enter in a server!");
    if (text::TrimSpaces(f.txtPort).empty()) return Note("You must enter in a port to use!");
    client_.Login(f.txtSN, f.txtPW, text::LeadingNumber(f.txtPort), false, false, f.cmbServers);
    signOffEnabled_ = true;
    SetInfo("Logging in...");
}

void SessionControl::cmdSignOff_Click() {
    SetInfo("Logging off...");
    client_.LogOff();
}

void SessionControl::cmdJoin_Click(const std::string& txtChat, const std::string& txtEx) {
    if (!game_.SignedOn) return Note("You need to sign on to join a chat!");
    if (!client_.Chat().empty()) return Note("You are already in a chat!");
    if (text::TrimSpaces(txtChat).empty()) return Note("You need to enter in a chat name to join!");
    if (text::TrimSpaces(txtEx).empty()) {
        return Note("You need to enter in the exchange you want to join!");
    }
    SetChatStatus("Joining chat...");
    client_.JoinChat(txtChat, static_cast<int>(std::min(text::LeadingNumber(txtEx), 65535LL)), 0);
}

void SessionControl::cmdLeave_Click(const std::string& txtChat) {
    if (!game_.SignedOn) return Note("You need to be signed on to join or leave chats.");
    if (client_.Chat().empty()) return Note("You are not in a chat!");
    SetChatStatus("Leaving chat...");
    const std::string wanted = text::NormalizeName(txtChat);
    for (const oscar::Chats& room : client_.Chat()) {
        if (text::NormalizeName(room.ChatName) == wanted) {
            client_.LeaveChat(room.ChatIndex);
            return;
        }
    }
}

void SessionControl::cmdSendChat_Click(const std::string& txtSend) {
    if (text::TrimSpaces(txtSend).empty() || client_.Chat().empty()) return;
    client_.SendChat(client_.Chat().front().ChatIndex, game_.Style().Styled(txtSend));
}

void SessionControl::cmdSetUser_Click(const std::string& txtUser) {
    if (text::TrimSpaces(txtUser).empty()) return;
    userName_ = text::TrimSpaces(text::StripTags(txtUser));
    client_.SetProfile(Profile());
}

std::string SessionControl::Profile() const {
    return profileHeader_ + "<hr><br>User: <font color=red>" + userName_ + "</font></body></html>";
}

void SessionControl::LoggedIn(const std::string&, const std::string&, const std::string&) {
    game_.SignedOn = true;
    SetInfo("Online!");
    client_.SetProfile(Profile());
}

void SessionControl::LoggedOff() {
    game_.SignedOn = false;
    // Signed off, the game stops too: no timer goes on sending into a room
    // that is gone. The word list and its position stay for the next sign-on.
    game_.StopPlay();
    signOffEnabled_ = false;
    SetInfo("Offline.");
}

void SessionControl::LoginError(const std::string& strDescription, int intErrorCode) {
    SetInfo(strDescription + " Error code: " + std::to_string(intErrorCode));
}

void SessionControl::Error(const std::string& strDescription, int intErrorCode, int,
                           const std::string&) {
    const std::string text = strDescription + " Error code: " + std::to_string(intErrorCode);
    if (IsRoomError(intErrorCode)) {
        SetChatStatus(text);
    } else {
        SetInfo(text);
    }
}

void SessionControl::ConnectionLost(int intSockIndex, const std::string&) {
    if (intSockIndex != 0) return;
    dialogs_.ShowMessage("Connection to the main BOS server has been lost",
                         std::string(game::kProductTitle), game::MessageKind::Plain);
    cmdSignOff_Click();
}

void SessionControl::JoinedChat(const std::string& strChatName, int, int, int intChatIndex, int,
                                int) {
    console_.AppendLine("You have entered chat room '" + strChatName + "'.");
    client_.SendChat(intChatIndex, game_.Style().Styled(game::JoinBanner()));
    SetChatStatus("Joined '" + strChatName + "'!");
}

void SessionControl::LeftChat(const std::string&, int, int, int intChatIndex) {
    SetChatStatus("Left chat.");
    people_.Clear();
    const auto& rooms = client_.Chat();
    if (!rooms.empty() && rooms.front().ChatIndex != intChatIndex) UpdateUserList(1);
}

void SessionControl::UserJoinedChat(int intChatIndex, const std::string& strScreenname) {
    console_.AppendLine("OnlineHost: " + strScreenname + " has entered the room.");
    PeopleChanged(intChatIndex, strScreenname, true);
}

void SessionControl::UserLeftChat(int intChatIndex, const std::string& strScreenname) {
    console_.AppendLine("OnlineHost: " + strScreenname + " has left the room.");
    PeopleChanged(intChatIndex, strScreenname, false);
}

void SessionControl::PeopleChanged(int chatIndex, const std::string& screenName, bool joined) {
    const int position = RoomPosition(chatIndex);
    if (position == 0) {
        people_.Clear();
        return;
    }
    std::vector<std::string>& people =
        client_.Chat()[static_cast<std::size_t>(position - 1)].PeopleHere;
    const std::string name = text::NormalizeName(screenName);
    const auto at = std::find(people.begin(), people.end(), name);
    if (joined && at == people.end()) people.push_back(name);
    if (!joined && at != people.end()) people.erase(at);
    UpdateUserList(position);
}

int SessionControl::RoomPosition(int chatIndex) const {
    const auto& rooms = client_.Chat();
    for (std::size_t i = 0; i < rooms.size(); ++i) {
        if (rooms[i].ChatIndex == chatIndex) return static_cast<int>(i) + 1;
    }
    return 0;
}

void SessionControl::UpdateUserList(int intChatIndex) {
    const auto& rooms = client_.Chat();
    if (intChatIndex < 1 || intChatIndex > static_cast<int>(rooms.size())) {
        people_.Clear();
        return;
    }
    const auto& people = rooms[static_cast<std::size_t>(intChatIndex - 1)].PeopleHere;
    people_.Assign(people);
    lblPeopleCount_ = std::to_string(people.size()) + " People Here";
    Changed();
}

void SessionControl::ChatMessage(int intChatIndex, const std::string& strScreenname,
                                 const std::string& strMessage) {
    commands_.ChatMessage(intChatIndex, strScreenname, strMessage);
}

}  // namespace session
