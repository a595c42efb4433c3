// The window's sign-on, sign-off, join, leave and console, and its handling
// of the client's events: the status lines, the transcript, the people in
// the room, the profile set after sign-on and the banner sent on joining.
#pragma once

#include <functional>
#include <string>

#include "game/chat_commands.h"
#include "game/console.h"
#include "game/game.h"
#include "game/operator_dialogs.h"
#include "game/string_list.h"
#include "oscar/client_events.h"
#include "oscar/tolsock.h"

namespace session {

// The Connection panel's fields as typed.
struct SignOnFields {
    std::string txtSN;
    std::string txtPW;
    std::string cmbServers;
    std::string txtPort;
};

class SessionControl : public oscar::ClientEvents {
  public:
    SessionControl(oscar::TolSock& client, game::Game& game, game::ChatCommands& commands,
                   game::Console& console, game::OperatorDialogs& dialogs);

    // --- Operator actions -------------------------------------------------
    void cmdSignOn_Click(const SignOnFields& fields);
    void cmdSignOff_Click();
    void cmdJoin_Click(const std::string& txtChat, const std::string& txtEx);
    void cmdLeave_Click(const std::string& txtChat);
    // Send or Enter in the console's line; the caller empties the line.
    void cmdSendChat_Click(const std::string& txtSend);

    // Set User: the user name shown in the profile, sent at once.
    void cmdSetUser_Click(const std::string& txtUser);
    const std::string& UserName() const { return userName_; }
    const std::string& ProfileHeader() const { return profileHeader_; }
    std::string Profile() const;

    // --- What the window shows ---------------------------------------------
    const std::string& lblInfo() const { return lblInfo_; }
    const std::string& lblChatStatus() const { return lblChatStatus_; }
    const std::string& lblPeopleCount() const { return lblPeopleCount_; }
    // Sign Off is offered from a Sign On that passed its checks until the
    // client reports the sign-off.
    bool cmdSignOffEnabled() const { return signOffEnabled_; }
    game::StringList& lstPeopleHere() { return people_; }
    // Called after any of the texts above changed.
    void SetChangeObserver(std::function<void()> changed) { changed_ = std::move(changed); }

    // Shows the people of the room at 1-based position `intChatIndex` of the
    // client's room list.
    void UpdateUserList(int intChatIndex);

    // --- Client events --------------------------------------------------------
    void LoggedIn(const std::string& strUser, const std::string& strEmail,
                  const std::string& strServerIP) override;
    void LoggedOff() override;
    void LoginError(const std::string& strDescription, int intErrorCode) override;
    void Error(const std::string& strDescription, int intErrorCode, int intSubErrorCode,
               const std::string& strFamilyDenied) override;
    void ConnectionLost(int intSockIndex, const std::string& strDescription) override;
    void JoinedChat(const std::string& strChatName, int intExchange, int intInstance,
                    int intChatIndex, int intMaxPeople, int intMaxMessageLength) override;
    void LeftChat(const std::string& strChatName, int intExchange, int intInstance,
                  int intChatIndex) override;
    void UserJoinedChat(int intChatIndex, const std::string& strScreenname) override;
    void UserLeftChat(int intChatIndex, const std::string& strScreenname) override;
    void ChatMessage(int intChatIndex, const std::string& strScreenname,
                     const std::string& strMessage) override;

  private:
    void Note(const std::string& text);
    void SetInfo(std::string text);
    void SetChatStatus(std::string text);
    void Changed() {
        if (changed_) changed_();
    }
    // The 1-based position of the room on `chatIndex`, 0 when none.
    int RoomPosition(int chatIndex) const;
    void PeopleChanged(int chatIndex, const std::string& screenName, bool joined);

    oscar::TolSock& client_;
    game::Game& game_;
    game::ChatCommands& commands_;
    game::Console& console_;
    game::OperatorDialogs& dialogs_;

    std::string lblInfo_ = "Offline.";
    std::string lblChatStatus_ = "You are not in a chat.";
    std::string lblPeopleCount_ = "# People Here";
    bool signOffEnabled_ = false;
    game::StringList people_;
    std::string userName_ = "Unknown";
    std::string profileHeader_;
    std::function<void()> changed_;
};

// The profile's fixed part, built once at start.
std::string BuildProfileHeader();

}  // namespace session
