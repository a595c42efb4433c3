// The window's sign-on, sign-off, join, leave and console, and its handling
// of the client's events: the status lines, the transcript, the people in
// the room, the profile set after sign-on and the banner sent on joining.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "game/chat_commands.h"
#include "game/console.h"
#include "game/game.h"
#include "game/operator_dialogs.h"
#include "game/string_list.h"
#include "oscar/client_events.h"
#include "oscar/tolsock.h"
#include "session/people_list.h"
#include "session/reconnector.h"

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
                   game::Console& console, game::OperatorDialogs& dialogs,
                   game::StringList& errors);
    ~SessionControl() override { client_.SetQueueObserver(nullptr); }
    SessionControl(const SessionControl&) = delete;
    SessionControl& operator=(const SessionControl&) = delete;

    // The refusal of a port that is no port number.
    static constexpr const char* kPortRange = "The port must be a number from 1 to 65535!";

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

    // --- Coming back by itself ---------------------------------------------
    // With a reconnector, a session that ends without the operator (a lost
    // connection, the server's sign-off, a failed migration) is signed on
    // again, the room rejoined and the game resumed; what happens goes to
    // the status line, the console and the error log. Without one, or with the
    // option off, a lost session ends with a message box as it always did.
    void UseReconnector(Reconnector* reconnector);
    void SetAutoReconnect(bool on);
    bool AutoReconnect() const { return autoReconnect_; }
    // The room to be in after every sign-on (a start without a window).
    void SetRoomToKeep(const std::string& name, int exchange);
    // Called after every join of a room, rejoins included.
    void SetJoinedObserver(std::function<void()> joined) { joined_ = std::move(joined); }

    // --- What the window shows ---------------------------------------------
    const std::string& lblInfo() const { return lblInfo_; }
    const std::string& lblChatStatus() const { return lblChatStatus_; }
    const std::string& lblPeopleCount() const { return lblPeopleCount_; }
    // Sign Off is offered from a Sign On that passed its checks until the
    // client reports the sign-off.
    bool cmdSignOffEnabled() const { return signOffEnabled_; }
    PeopleList& lstPeopleHere() { return people_; }
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
    // The client's send queue of a connection changed: the console says when
    // room lines start waiting for the server's rate limit and when they
    // have all gone.
    void SendQueueChanged(int intChatIndex, std::size_t waiting);

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
    bool Retrying() const;
    // The session ended on its own: schedule the next try, or say why none.
    void SessionEnded(const std::string& why, bool signedOnElsewhere);
    void ReportNextTry(const std::string& why, std::optional<int> delay);
    void Report(const std::string& text);
    void TryAgain();
    void AbandonTry();

    oscar::TolSock& client_;
    game::Game& game_;
    game::ChatCommands& commands_;
    game::Console& console_;
    game::OperatorDialogs& dialogs_;
    game::StringList& errors_;

    // The room status shows a room or a join under way, which a sign-off ends.
    bool roomShown_ = false;
    std::string lblInfo_ = "Offline.";
    std::string lblChatStatus_ = "You are not in a chat.";
    std::string lblPeopleCount_ = "# People Here";
    bool signOffEnabled_ = false;
    PeopleList people_;
    std::string userName_ = "Unknown";
    std::string profileHeader_;
    std::function<void()> changed_;
    bool holding_ = false;  // room lines wait in the send queue

    struct Room {
        std::string name;
        int exchange = 4;
    };
    Reconnector* reconnector_ = nullptr;
    bool autoReconnect_ = true;
    SignOnFields lastSignOn_;   // what the last Sign On used, for the next tries
    std::optional<Room> room_;  // the room to rejoin
    bool leaving_ = false;      // the operator asked to leave the room
    std::function<void()> joined_;
};

// The profile's fixed part, built once at start.
std::string BuildProfileHeader();

}  // namespace session
