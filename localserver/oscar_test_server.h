// A loopback OSCAR server for tests and for trying the bot without an
// account: authorization, BOS, chat navigation and chat on one port, as
// today's servers run them, with scripted players and faults on request.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTcpServer>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "oscar/frame_cutter.h"
#include "oscar/rate_limiter.h"

class QTcpSocket;

namespace testserver {

enum class Role { Unknown, Auth, Bos, ChatNav, Chat, Admin, Icon };

// A line said in a room, as the server relayed it.
struct RelayedLine {
    std::string room;
    std::string sender;
    std::string text;
    std::string charset;  // the label of the message block, as sent
};

class OscarTestServer : public QObject {
    Q_OBJECT

  public:
    explicit OscarTestServer(QObject* parent = nullptr);
    ~OscarTestServer() override;

    // Listens on 127.0.0.1 at `port` (0 picks a free one), and on a second
    // port for sessions that migrate. False when a port cannot be had.
    bool Start(quint16 port = 0);
    quint16 Port() const;
    quint16 MigrationPort() const;

    // --- Accounts ---------------------------------------------------------
    void AddAccount(const std::string& screenName, const std::string& password,
                    const std::string& email = "");
    // With open sign-on, an unknown screen name is registered with the
    // password it first signs on with.
    void SetOpenSignOn(bool open) { openSignOn_ = open; }

    // --- Rooms and scripted players ----------------------------------------
    void AddScriptedPlayer(const std::string& room, const std::string& name, int exchange = 4);
    void RemoveScriptedPlayer(const std::string& room, const std::string& name, int exchange = 4);
    void PlayerSays(const std::string& room, const std::string& name, const std::string& text,
                    int exchange = 4);
    // A line whose message block (text, character set, language TLVs in any
    // order) is given whole.
    void PlayerSaysBlock(const std::string& room, const std::string& name,
                         const std::string& messageBlock, int exchange = 4);
    // Every line relayed in any room, in order.
    const std::vector<RelayedLine>& Lines() const { return lines_; }
    // Occupants of a room: signed-on users and scripted players.
    std::vector<std::string> Occupants(const std::string& room, int exchange = 4) const;
    // Tells `listener` of every relayed line, after it went out.
    void AddLineListener(std::function<void(const RelayedLine&)> listener) {
        lineListeners_.push_back(std::move(listener));
    }
    // Forgets the relayed lines kept so far (a long run keeps no history).
    void ForgetLines() { lines_.clear(); }
    void SetKeepLines(bool keep) { keepLines_ = keep; }

    // --- Rate limits ------------------------------------------------------
    // Every connection has five rate classes; chat lines (000E/0005) count
    // against class 2, everything else against class 1. Below a class's
    // alert level the connection gets a 0001/000A warning, below the limit
    // its SNACs are dropped until the average is back above the clear level,
    // below the disconnect level it is closed. A divisor above 1 divides
    // every level (not the window), for tests that flood in seconds.
    void SetRateDivisor(int divisor) { rateDivisor_ = divisor < 1 ? 1 : divisor; }
    oscar::RateClass RateClassParams(int id) const;
    // SNACs dropped for a rate limit so far.
    int DroppedSnacs() const { return dropped_; }
    // The codes of the 0001/000A notices sent (2 warning, 3 limited, 4 clear).
    const std::vector<int>& RateNotices() const { return rateNotices_; }
    // Channel-5 frames received from the user's connection of `role`.
    int KeepAlives(const std::string& screenName, Role role) const;

    // --- Faults -----------------------------------------------------------
    // The next room request is refused with this subcode.
    void FailNextJoin(int subcode) { joinError_ = subcode; }
    void PauseSession(const std::string& screenName);
    void ResumeSession(const std::string& screenName);
    void MigrateSession(const std::string& screenName);
    // The channel-4 frame of a second sign-on elsewhere (TLV 0x0009 = 01 and
    // a web address), or, with SetTruncatedSignOff, the cut-short 4-byte
    // frame some servers send instead; then the connection closes. A second
    // sign-on of the same name does this to the first session's BOS connection.
    void SignOffSession(const std::string& screenName);
    void SetTruncatedSignOff(bool truncated) { truncatedSignOff_ = truncated; }
    // As a server that stops or restarts: every BOS connection gets an empty
    // channel-4 frame and closes, every other connection closes, and nothing
    // new is accepted.
    void Shutdown();
    // Service redirects name this "host:port" instead of this server's own
    // address (a closed port, a silent server, a port out of range).
    void SetServiceAddress(const std::string& address) { serviceAddress_ = address; }
    // Drops the user's connection of `role` at once.
    void CloseConnection(const std::string& screenName, Role role);
    // Writes raw bytes on the user's connection of `role`.
    void SendRaw(const std::string& screenName, Role role, const std::string& bytes);

    // Sessions signed on now (normalized names), and how many BOS setups
    // completed in all.
    std::vector<std::string> SignedOn() const;
    int BosSetups() const { return bosSetups_; }
    // The profile a user set last.
    std::string Profile(const std::string& screenName) const;

  private:
    struct Account {
        std::string name;  // as registered
        std::string password;
        std::string email;
        std::string key;  // the MD5 key, the same every time
    };
    struct Room {
        std::string name;
        int exchange = 4;
        std::string cookie;
        std::vector<std::string> players;  // scripted
    };
    struct Connection {
        QTcpSocket* socket = nullptr;
        Role role = Role::Unknown;
        std::string user;  // normalized screen name
        oscar::FrameCutter frames;
        std::uint16_t sequence = 0;
        Room* room = nullptr;
        // Rate classes 1-5: the moving average and when the last SNAC came.
        struct Rate {
            double average = 0;
            qint64 last = 0;
            bool alerted = false;
            bool limited = false;
        };
        std::vector<Rate> rates;
        bool longRateClasses = false;  // the client asked for family 0001 version 4
        int keepAlives = 0;
        bool signedOff = false;  // sent its sign-off frame, closing
    };
    struct Ticket {
        Role role;
        std::string user;
        std::string roomKey;
    };

    void Accept(QTcpServer* server);
    void Read(QTcpSocket* socket);
    void Closed(QTcpSocket* socket);
    void Frame(Connection& c, int channel, const std::string& payload);
    void Handle(Connection& c, const std::string& frame);
    void HandleGreeting(Connection& c, const std::string& payload);
    void HandleAuth(Connection& c, const std::string& key, const std::string& data);
    void HandleBos(Connection& c, const std::string& key, const std::string& data);
    void HandleService(Connection& c, const std::string& key, const std::string& data);
    void HandleChatNav(Connection& c, const std::string& key, const std::string& data);
    void HandleChat(Connection& c, const std::string& key, const std::string& data);
    void ServiceRequest(Connection& c, const std::string& data);
    void JoinRoom(Connection& c);
    void Relay(Room& room, const std::string& sender, const std::string& messageBlock,
               const Connection* except = nullptr);
    // Counts a SNAC against its rate class; false when it is dropped or the
    // connection was closed for it.
    bool Admit(Connection& c, const std::string& key);
    std::string RateClasses(const Connection& c) const;
    std::string RateFields(const Connection& c, int id) const;
    void Broadcast(Room& room, const std::string& snac, const Connection* except = nullptr);

    std::string NewCookie(Role role, const std::string& user, const std::string& roomKey = "");
    Room& RoomFor(const std::string& name, int exchange);
    Room* FindRoom(const std::string& name, int exchange);
    Connection* Find(const std::string& user, Role role);
    std::vector<Connection*> Members(const Room& room);

    QTcpServer server_;
    QTcpServer migrationServer_;
    std::map<QTcpSocket*, Connection> connections_;
    std::map<std::string, Account> accounts_;  // by normalized name
    std::map<std::string, Ticket> tickets_;    // by cookie
    std::map<std::string, Room> rooms_;        // by exchange and normalized name
    std::vector<RelayedLine> lines_;
    std::vector<std::function<void(const RelayedLine&)>> lineListeners_;
    bool keepLines_ = true;
    bool openSignOn_ = false;
    bool truncatedSignOff_ = false;
    bool stopping_ = false;
    std::string serviceAddress_;
    int joinError_ = 0;
    int bosSetups_ = 0;
    int cookieCount_ = 0;
    int rateDivisor_ = 1;
    int dropped_ = 0;
    std::vector<int> rateNotices_;
    QElapsedTimer clock_;
    std::map<std::string, std::string> profiles_;
};

}  // namespace testserver
