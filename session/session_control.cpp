#include "session/session_control.h"

#include <algorithm>
#include <cctype>
#include <chrono>
#include <ctime>

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

// The wall-clock time `secondsAhead` from now, as HH:MM:SS local time.
std::string ClockTime(int secondsAhead = 0) {
    const std::time_t at = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now() +
                                                                std::chrono::seconds(secondsAhead));
    char text[16] = "";
    if (const std::tm* local = std::localtime(&at)) {
        std::strftime(text, sizeof text, "%H:%M:%S", local);
    }
    return text;
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
                               game::OperatorDialogs& dialogs, game::StringList& errors)
    : client_(client),
      game_(game),
      commands_(commands),
      console_(console),
      dialogs_(dialogs),
      errors_(errors),
      profileHeader_(BuildProfileHeader()) {
    client_.SetQueueObserver(
        [this](int index, std::size_t waiting) { SendQueueChanged(index, waiting); });
}

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
    // A port number has 16 bits: a larger one would wrap to some other port.
    const long long port = text::LeadingNumber(f.txtPort);
    if (port < 1 || port > 65535) return Note(kPortRange);
    // Signing on by hand starts afresh: no earlier room, no frozen game.
    if (reconnector_) reconnector_->Reset();
    room_.reset();
    if (game_.Suspended()) game_.StopPlay();
    lastSignOn_ = f;
    client_.Login(f.txtSN, f.txtPW, port, false, false, f.cmbServers);
    signOffEnabled_ = true;
    SetInfo("Logging in...");
}

void SessionControl::cmdSignOff_Click() {
    if (reconnector_) reconnector_->Reset();
    room_.reset();
    SetInfo("Logging off...");
    client_.LogOff();
}

void SessionControl::cmdJoin_Click(const std::string& txtChat, const std::string& txtEx) {
    if (!game_.SignedOn) return Note("You need to sign on to join a chat!");
    if (!client_.Chat().empty()) return Note("You are already in a chat!");
    if (client_.JoinPending()) {
        return Note("A join is already under way: wait until it has joined or failed.");
    }
    if (text::TrimSpaces(txtChat).empty()) return Note("You need to enter in a chat name to join!");
    if (text::TrimSpaces(txtEx).empty()) {
        return Note("You need to enter in the exchange you want to join!");
    }
    roomShown_ = true;
    SetChatStatus("Joining chat...");
    client_.JoinChat(txtChat, static_cast<int>(std::min(text::LeadingNumber(txtEx), 65535LL)), 0);
}

void SessionControl::cmdLeave_Click(const std::string& txtChat) {
    if (!game_.SignedOn) return Note("You need to be signed on to join or leave chats.");
    if (client_.Chat().empty()) return Note("You are not in a chat!");
    SetChatStatus("Leaving chat...");
    leaving_ = true;
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
    if (!reconnector_) return;
    reconnector_->Arm();
    if (Retrying() && room_ && client_.Chat().empty()) {
        SetChatStatus("Joining chat...");
        client_.JoinChat(room_->name, room_->exchange, 0);
    } else {
        reconnector_->Recovered();
    }
}

void SessionControl::LoggedOff() {
    game_.SignedOn = false;
    if (Retrying() && (reconnector_->Waiting() || reconnector_->Attempting())) {
        // Coming back: the round waits, frozen, for the room; Sign Off stays
        // offered, to stop the tries.
        game_.Suspend();
    } else {
        // Signed off, the game stops too: no timer goes on sending into a
        // room that is gone. The word list and its position stay for the
        // next sign-on.
        game_.StopPlay();
        signOffEnabled_ = false;
    }
    // Whatever room was shown, or joined, is gone with the session.
    people_.Clear();
    if (roomShown_) {
        roomShown_ = false;
        SetChatStatus("Left chat.");
    }
    SetInfo("Offline.");
}

void SessionControl::LoginError(const std::string& strDescription, int intErrorCode) {
    const std::string text = strDescription + " Error code: " + std::to_string(intErrorCode);
    const bool retrying = Retrying();
    const std::optional<int> delay =
        retrying ? reconnector_->SignOnRefused(intErrorCode) : std::nullopt;
    // Refused for good: nothing is left to sign off from.
    if (!delay) signOffEnabled_ = false;
    SetInfo(text);
    if (!retrying) return;
    if (!delay) game_.StopPlay();
    ReportNextTry(text, delay);
}

void SessionControl::UseReconnector(Reconnector* reconnector) {
    reconnector_ = reconnector;
    if (!reconnector_) return;
    reconnector_->SetTry([this] { TryAgain(); });
    reconnector_->SetAbandon([this] { AbandonTry(); });
}

void SessionControl::SetAutoReconnect(bool on) {
    autoReconnect_ = on;
    if (on || !reconnector_ || !(reconnector_->Waiting() || reconnector_->Attempting())) return;
    // Turned off while coming back: the session stays ended.
    reconnector_->Reset();
    game_.StopPlay();
    if (!game_.SignedOn) client_.LogOff();
}

void SessionControl::SetRoomToKeep(const std::string& name, int exchange) {
    room_ = Room{name, exchange};
}

bool SessionControl::Retrying() const {
    return reconnector_ && autoReconnect_ && reconnector_->Armed();
}

void SessionControl::Report(const std::string& text) {
    SetInfo(text);
    const std::string stamped = "[" + ClockTime() + "] " + text;
    console_.AppendLine(stamped);
    errors_.Append(stamped);
}

void SessionControl::ReportNextTry(const std::string& why, std::optional<int> delay) {
    if (delay) {
        Report(why + " Next try in " + std::to_string(*delay) + " s, at " + ClockTime(*delay) +
               ".");
    } else {
        Report(why + " " + reconnector_->StopReason());
    }
}

void SessionControl::SessionEnded(const std::string& why, bool signedOnElsewhere) {
    const std::optional<int> delay = reconnector_->SessionLost(signedOnElsewhere);
    if (delay) game_.Suspend();
    // The client forgets the dead session and its rooms; with a try ahead
    // the game stays frozen, otherwise it stops as on any sign-off.
    client_.LogOff();
    people_.Clear();
    SetChatStatus("Left chat.");
    ReportNextTry(why.empty() ? std::string("The session has ended.") : why, delay);
}

void SessionControl::TryAgain() {
    if (client_.LoggedInState()) {
        // Only the room was lost; the session stands.
        if (room_ && client_.Chat().empty()) {
            SetChatStatus("Joining chat...");
            client_.JoinChat(room_->name, room_->exchange, 0);
        } else {
            reconnector_->Recovered();
        }
        return;
    }
    const SignOnFields& f = lastSignOn_;
    SetInfo("Logging in...");
    client_.Login(f.txtSN, f.txtPW, text::LeadingNumber(f.txtPort), false, false, f.cmbServers);
}

void SessionControl::AbandonTry() {
    const std::optional<int> delay = reconnector_->SessionLost(false);
    if (!client_.LoggedInState()) client_.LogOff();
    ReportNextTry("No answer from the server.", delay);
}

void SessionControl::Error(const std::string& strDescription, int intErrorCode, int,
                           const std::string&) {
    const std::string text = strDescription + " Error code: " + std::to_string(intErrorCode);
    // Every failed join says so at its start, whatever the server's code.
    if (IsRoomError(intErrorCode) || strDescription.starts_with("Join chat failed")) {
        roomShown_ = false;
        SetChatStatus(text);
    } else {
        SetInfo(text);
    }
}

void SessionControl::ConnectionLost(int intSockIndex, const std::string& strDescription) {
    if (Retrying()) {
        if (intSockIndex == 0) {
            return SessionEnded(strDescription, client_.LastSessionEnd().cause ==
                                                    oscar::SessionEndCause::SignedOnElsewhere);
        }
        if (room_ && client_.LoggedInState() && client_.Chat().empty() &&
            !reconnector_->Waiting()) {
            // The room's own connection went: the session stands, the room is rejoined.
            return ReportNextTry(strDescription, reconnector_->SessionLost(false));
        }
    }
    errors_.Append(strDescription);
    if (intSockIndex != 0) return;
    if (!game_.SignedOn) {
        // The sign-on never got through: the status says which step and
        // which server failed, and Sign On can be pressed again.
        client_.LogOff();
        SetInfo(strDescription);
        return;
    }
    dialogs_.ShowMessage("Connection to the main BOS server has been lost",
                         std::string(game::kProductTitle), game::MessageKind::Plain);
    cmdSignOff_Click();
}

void SessionControl::JoinedChat(const std::string& strChatName, int intExchange, int,
                                int intChatIndex, int, int) {
    roomShown_ = true;
    console_.AppendLine("You have entered chat room '" + strChatName + "'.");
    client_.SendChat(intChatIndex, game_.Style().Styled(game::JoinBanner()));
    SetChatStatus("Joined '" + strChatName + "'!");
    room_ = Room{strChatName, intExchange};
    leaving_ = false;
    if (reconnector_) reconnector_->Recovered();
    game_.Resume();
    if (joined_) joined_();
}

void SessionControl::LeftChat(const std::string&, int, int, int intChatIndex) {
    roomShown_ = false;
    if (leaving_) {
        leaving_ = false;
        room_.reset();
    } else if (Retrying()) {
        // The room went away by itself: the round waits for the rejoin.
        game_.Suspend();
    }
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
    oscar::NameSequence& people = client_.Chat()[static_cast<std::size_t>(position - 1)].PeopleHere;
    const std::string name = text::NormalizeName(screenName);
    // A room in view gets the one name added or taken out; copying the
    // whole room for each arrival made a crowded room's join quadratic.
    const bool shown = people_.Shows(people);
    if (joined) {
        people.push_back(name);
    } else {
        people.erase(name);
    }
    if (!shown) return UpdateUserList(position);
    if (joined) {
        people_.Add(name);
    } else {
        people_.Remove(name);
    }
    lblPeopleCount_ = std::to_string(people.size()) + " People Here";
    Changed();
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

void SessionControl::SendQueueChanged(int intChatIndex, std::size_t waiting) {
    if (waiting > 0 && !holding_ && RoomPosition(intChatIndex) != 0) {
        holding_ = true;
        console_.AppendLine("(Lines are waiting to stay under the server's rate limit...)");
    } else if (waiting == 0 && holding_) {
        holding_ = false;
        // The room's connection closing empties its queue too.
        console_.AppendLine(RoomPosition(intChatIndex) != 0
                                ? "(All waiting lines have been sent.)"
                                : "(The waiting lines were lost with the room's connection.)");
    }
}

}  // namespace session
