// TolSock, the OSCAR client: its connections and frames, the requests the
// program makes, and the dispatch of every incoming frame into events.
//
// One thread: socket notifications, timer ticks and clicks arrive one at a
// time. Events are raised synchronously, so an event handler may call the
// client again (send a line, leave a room, sign off) in the middle of a
// frame; every loop over rooms or TLVs here stays correct when it does.
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "oscar/bodies.h"
#include "oscar/chats.h"
#include "oscar/client_events.h"
#include "oscar/clock.h"
#include "oscar/encoding.h"
#include "oscar/frame_cutter.h"
#include "oscar/rate_limiter.h"
#include "oscar/socket_layer.h"

namespace oscar {

// How the last session ended, for whoever decides whether to sign on again:
// "signed on elsewhere" must not be answered by signing on again at once.
enum class SessionEndCause {
    None,
    ConnectionLost,     // the BOS connection failed or its peer closed it
    ServerSignOff,      // a sign-off frame: the server stops or restarts
    SignedOnElsewhere,  // a sign-off frame with code 1
    SignOnFailed,       // a sign-on step failed or got no answer in time
    MigrationFailed,    // moving to another BOS server failed
};

struct SessionEnd {
    SessionEndCause cause = SessionEndCause::None;
    int code = 0;             // the sign-off frame's error code (TLV 0x0009), 0 when none
    std::string url;          // the sign-off frame's web address (TLV 0x000B)
    std::string description;  // the text raised with ConnectionLost(0, ...)
};

class TolSock : public SocketListener {
  public:
    // The highest socket index the client uses.
    static constexpr int kMaxIndex = 50;
    // Seconds a sign-on step or a step of a join may wait for its server.
    static constexpr int kStepSeconds = 15;

    explicit TolSock(SocketLayer& sockets);
    ~TolSock() override;
    TolSock(const TolSock&) = delete;
    TolSock& operator=(const TolSock&) = delete;

    // Who hears the events; nullptr (the start) means nobody does.
    void SetObserver(ClientEvents* observer) { events_ = observer ? observer : &silent_; }
    // The two sign-on options that pick the capability set sent at sign-on.
    void SetCapabilityOptions(CapabilityOptions options) { capabilities_ = options; }
    // The time the send queues and the keep-alives run on. Without one
    // (nullptr, the start) every frame is written at once and no keep-alive
    // is sent.
    void SetClock(Clock* clock);
    // Told how many SNACs wait in the send queue of a connection, whenever
    // that number changes.
    void SetQueueObserver(std::function<void(int index, std::size_t waiting)> observer) {
        queueObserver_ = std::move(observer);
    }
    std::size_t Waiting(int index) const {
        return ValidIndex(index) ? connections_[static_cast<std::size_t>(index)].queue.size() : 0;
    }
    // An empty channel-5 frame goes on every connection that has written
    // nothing for this long.
    static constexpr std::int64_t kKeepAliveMs = 60000;

    // --- Requests ---------------------------------------------------------
    void Login(const std::string& strUser, const std::string& strPassword, long long lngPort,
               bool blnMD5Login, bool blnInvisible, const std::string& strAuthServer = "");
    void LogOff();
    void SendIM(const std::string& strScreenname, const std::string& strMessage);
    void JoinChat(const std::string& strChatName, int intExchange, int intInstance);
    void LeaveChat(int lngChatIndex, const std::string& strChatName = "", int intExchange = 0);
    void SendChat(int intChatIndex, const std::string& strMessage,
                  const std::string& strChatName = "", int intExchange = 0);
    void EmailLookup(const std::string& strEmail);
    void GetUserInfo(const std::string& strScreenname, int TheType = 0);
    void SetProfile(const std::string& strProfile);
    void SetIdle(double IdleSeconds);
    void SetCapabilities(const std::vector<std::string>& UUIDs);
    void InviteChatBuddy(const std::string& strBuddy);
    void FormatScreenname(const std::string& strFormat);
    void ChangePassword(const std::string& strNewPassword);
    void ChangeEmail(const std::string& strNewEmail);
    void NewRegStatus(int intNewRegType);
    void RequestNick();
    void RequestEmail();
    void RequestRegistrationStatus();
    void GetBuddyIcon(const std::string& strBuddy, const std::string& strMD5Hash);

    // --- Connections ------------------------------------------------------
    // Frames the payload with the index's next sequence number and writes it;
    // a SNAC that would take its rate class too low, or that has others
    // waiting before it, waits in the connection's queue instead.
    void SendPacket(int Index, int intChannel, const std::string& strPacket);
    // Handles one whole incoming frame, header included.
    void ParsePacket(int Index, const std::string& strPacket);
    void CloseSock(int Index);
    void DropConnection(int Index);
    void ResetSockets();
    void ResetAll();
    void SendPendingAdmin();

    void OnDataArrival(int index) override;
    void OnSocketError(int index) override;

    // --- Deadlines --------------------------------------------------------
    // One second has passed: a sign-on step or a join that has waited
    // kStepSeconds for its server fails, saying which step and which server.
    void TickSecond();

    // --- State ------------------------------------------------------------
    // The joined rooms, in the order their connections were set up.
    std::vector<Chats>& Chat() { return chat_; }
    const std::vector<Chats>& Chat() const { return chat_; }
    int ChatNavIndex() const { return intChatNavIndex_; }
    int AdminIndex() const { return intAdminIndex_; }
    int IconIndex() const { return intIconIndex_; }
    int EmailIndex() const { return intEmailIndex_; }
    bool LoggedInState() const { return blnLoggedIn_; }
    bool Paused() const { return blnPaused_; }
    bool Authorizing() const { return blnAuthorizing_; }
    // A join is under way: a second one is refused until it ends.
    bool JoinPending() const { return join_.active; }
    // Every end of a session (a lost BOS connection, a sign-off frame, a
    // failed sign-on step or migration) is raised as ConnectionLost(0, ...)
    // and recorded here first.
    const SessionEnd& LastSessionEnd() const { return lastEnd_; }

  private:
    struct Connection {
        FrameCutter cutter;
        std::int32_t seqNum = 0;  // never reset: continues across reconnections
        bool cutting = false;     // frames of this index are being handed out
        // The redirect that opened this service connection.
        std::string cookie;
        std::string family;  // 4 hex digits
        TLVList families;    // (family, version) items of the versions reply
        // Sending: the server's rate classes, the SNACs held back by them,
        // and when this side last wrote (-1: not since connecting).
        RateLimiter rates;
        std::deque<std::string> queue;
        std::int64_t lastWrite = -1;
        std::string address;  // "host:port" of the service's server
    };

    // The join under way, and the step it waits on.
    struct PendingJoin {
        bool active = false;
        int secondsLeft = 0;
        std::string step;   // "connecting to the chat server 127.0.0.1:5190", ...
        int navIndex = 0;   // the chat-navigation connection it uses
        int chatIndex = 0;  // the room's connection, once redirected
    };

    struct PendingAdmin {
        std::string newPassword;
        std::string format;
        std::string email;
        int regType = 0;
        bool nick = false;
        bool emailRequested = false;
        bool registration = false;
    };

    static bool ValidIndex(int index) { return index >= 0 && index <= kMaxIndex; }
    Connection& Conn(int index) { return connections_[static_cast<std::size_t>(index)]; }
    const Connection& Conn(int index) const {
        return connections_[static_cast<std::size_t>(index)];
    }
    int HighestIndex() const;
    void Disconnect(int index);
    // The send queue and the keep-alives, in send_queue.cpp.
    void Write(int index, int channel, const std::string& payload);
    void ReadRates(int index, const std::string& frame);
    void RateChange(int index, const std::string& frame);
    void DropQueue(int index);
    void OnClock();
    void Reschedule();
    void QueueChanged(int index);
    // The connection to `index` ended (a socket error, the peer closed it, or
    // a sign-off frame); `why` says how.
    void LoseConnection(int index, const std::string& why);
    // The one way a session ends: rooms left, everything reset, then
    // ConnectionLost(0, end.description).
    void EndSession(SessionEnd end);
    // Fails a sign-on or migration step: which step, which server, why.
    void FailSignOn(const std::string& why);
    void SignOffFrame(const std::string& frame);
    void SignOnStatus(const std::string& text);
    void WaitForBos(const std::string& step);
    void JoinStep(std::string step);
    void FailJoin(const std::string& text, int code, std::string family, bool dropNav);
    std::string ServerOf(int index) const;
    // Opens the connection a redirect names, unless its address is unusable.
    void OpenServiceConnection(const TLVList& tlvs);
    void SendServiceRequest(const char* familyHex);
    void SendRoomRequest(int index);
    // Takes the first room on `index` off the list.
    std::optional<Chats> TakeRoom(int index);
    void RemoveRoomsAndRaiseLeft(int index);
    // Sends `packet` on the admin connection when there is one, else asks
    // for one; true when it was sent.
    bool SendAdmin(const std::string& packet);

    // Incoming frames (index 0 and the others), in sign-on.cpp and
    // services.cpp.
    void ParseBosFrame(const std::string& frame);
    void ParseServiceFrame(int index, const std::string& frame);
    void AuthorizationGreeting();
    void KeyReply(const std::string& frame);
    void AuthorizationReply(const std::string& frame);
    void BosGreeting();
    void RateInformation();
    void BosRights();
    void Migration(const std::string& frame);
    void ServiceRedirect(const std::string& frame);
    void GenericError(const std::string& frame);
    void ServiceHostOnline(int index);
    void ServiceVersions(int index, const std::string& frame);
    void ServiceRates(int index);
    void ChatNavigationReply(int index, const std::string& frame);
    void ChatNavigationError(const std::string& frame);
    void RoomInformation(int index, const std::string& frame);
    void Occupants(int index, const std::string& frame, bool joined);
    void ChatLine(int index, const std::string& frame);
    void IncomingIM(const std::string& frame);
    void IcbmError(const std::string& frame);
    void UserInformation(const std::string& frame);
    void EmailLookupError(const std::string& frame);
    void EmailLookupReply(const std::string& frame);
    void AdminError(const std::string& frame);
    void AdminInformation(const std::string& frame);
    void AdminChange(const std::string& frame);
    void BuddyIcon(const std::string& frame);
    void SendPendingIconRequest();

    void ClearLoginInfo();
    // Forgets the redirect that opened `index` once its service is set up.
    void ClearConnectionRedirect(int index);
    void ClearPendingChat();
    void ClearPendingAdmin() { pendingAdmin_ = PendingAdmin{}; }

    SocketLayer& sockets_;
    ClientEvents silent_;
    ClientEvents* events_ = &silent_;
    CapabilityOptions capabilities_;
    Clock* clock_ = nullptr;
    std::optional<std::int64_t> wakeAt_;
    std::function<void(int, std::size_t)> queueObserver_;

    std::array<Connection, kMaxIndex + 1> connections_;
    std::vector<Chats> chat_;
    int intChatNavIndex_ = 0;
    int intAdminIndex_ = 0;
    int intIconIndex_ = 0;
    int intEmailIndex_ = 0;

    // Sign-on.
    std::string screenName_;
    std::string password_;
    std::string authHost_;
    long long authPort_ = 0;
    bool blnAuthorizing_ = false;
    bool blnLoggedIn_ = false;
    bool blnPaused_ = false;
    std::string bosHost_;
    long long bosPort_ = 0;
    std::string bosCookie_;
    std::string strAccountEmail_;
    std::string strICBMParams_;
    bool migrating_ = false;
    // The sign-on (or migration) step waited on: its server and seconds left
    // (0: nothing is waited on).
    std::string signOnServer_;
    std::string signOnStep_;
    int signOnSecondsLeft_ = 0;
    SessionEnd lastEnd_;
    PendingJoin join_;

    // Chat rooms.
    std::string strPendingChatName_;
    int intPendingExchange_ = 0;
    int intPendingInstance_ = 0;
    bool blnCreatePending_ = false;
    std::string strChatEncoding_;
    std::uint16_t chatCounter_ = 0;

    PendingAdmin pendingAdmin_;
    std::string pendingIconBuddy_;
    std::string pendingIconHash_;
};

}  // namespace oscar
