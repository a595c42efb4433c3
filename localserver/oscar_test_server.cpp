#include "localserver/oscar_test_server.h"

#include <QRandomGenerator>
#include <QTcpSocket>
#include <algorithm>

#include "oscar/charset.h"
#include "oscar/encoding.h"
#include "oscar/login_request.h"
#include "text/text.h"

namespace testserver {

namespace {

using oscar::HexToBytes;
using oscar::MakeTLV;
using oscar::Word;

std::string Snac(std::uint16_t family, std::uint16_t subtype, std::uint32_t requestId = 0) {
    return Word(family) + Word(subtype) + Word(0) + oscar::DWord(requestId);
}

std::string Tlv(const char* type, const std::string& value) {
    return MakeTLV(type, 2, value);
}

std::string Lp(const std::string& text) {
    return MakeTLV("", 1, text.substr(0, 255));
}

// name, warning level 0, no TLVs
std::string UserInfo(const std::string& name) {
    return Lp(name) + Word(0) + Word(0);
}

oscar::TLVList ParseAll(std::string data) {
    oscar::TLVList tlvs;
    while (!data.empty())
        oscar::ParseTLVs(data, tlvs);
    return tlvs;
}

std::string Value(const oscar::TLVList& tlvs, const char* type) {
    return oscar::FindTLV(tlvs, HexToBytes(type)).value_or("");
}

std::string RoomKey(const std::string& name, int exchange) {
    return std::to_string(exchange) + ":" + text::NormalizeName(name);
}

constexpr int kRateClasses = 5;

// The rate classes of today's servers, levels in milliseconds: id, window,
// clear, alert, limit, disconnect, max.
constexpr std::uint32_t kRateTable[kRateClasses][7] = {
    {1, 80, 2500, 2000, 1500, 800, 6000},  {2, 80, 3000, 2000, 1500, 1000, 6000},
    {3, 20, 5100, 5000, 4000, 3000, 6000}, {4, 20, 5500, 5300, 4200, 3000, 8000},
    {5, 10, 5500, 5300, 4200, 3000, 8000},
};

// What class 1 governs besides everything unlisted; class 2 is the chat line.
constexpr std::uint32_t kClassOneMembers[] = {
    0x00010002, 0x00010004, 0x00010006, 0x00010008, 0x0001000E, 0x00010011, 0x00010017, 0x00020002,
    0x00020004, 0x00020015, 0x00030002, 0x00040002, 0x00040004, 0x00040006, 0x00070002, 0x00070004,
    0x00090002, 0x000A0002, 0x000D0002, 0x000D0008, 0x00100004, 0x00130002, 0x00130005, 0x00130007};

}  // namespace

OscarTestServer::OscarTestServer(QObject* parent) : QObject(parent) {
    clock_.start();
    connect(&server_, &QTcpServer::newConnection, this, [this] { Accept(&server_); });
    connect(&migrationServer_, &QTcpServer::newConnection, this,
            [this] { Accept(&migrationServer_); });
}

OscarTestServer::~OscarTestServer() {
    for (auto& [socket, c] : connections_) {
        socket->disconnect(this);
        socket->abort();
    }
}

bool OscarTestServer::Start(quint16 port) {
    return server_.listen(QHostAddress::LocalHost, port) &&
           migrationServer_.listen(QHostAddress::LocalHost, 0);
}

quint16 OscarTestServer::Port() const {
    return server_.serverPort();
}
quint16 OscarTestServer::MigrationPort() const {
    return migrationServer_.serverPort();
}

void OscarTestServer::AddAccount(const std::string& screenName, const std::string& password,
                                 const std::string& email) {
    Account& a = accounts_[text::NormalizeName(screenName)];
    a.name = screenName;
    a.password = password;
    a.email = email;
    // A UUID text, as real servers send: 36 printable bytes.
    a.key = "6f1e2a3b-0c4d-4e5f-8a9b-" +
            oscar::BytesToHex(oscar::LoginHash(screenName, "")).substr(0, 12);
}

void OscarTestServer::Accept(QTcpServer* server) {
    while (QTcpSocket* socket = server->nextPendingConnection()) {
        Connection& c = connections_[socket];
        c.socket = socket;
        // A fresh connection starts every class at its maximum.
        for (int id = 1; id <= kRateClasses; ++id)
            c.rates.push_back({static_cast<double>(RateClassParams(id).max), clock_.elapsed()});
        socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { Read(socket); });
        connect(socket, &QTcpSocket::disconnected, this, [this, socket] { Closed(socket); });
        // The server speaks first on every connection.
        Frame(c, 1, HexToBytes("00000001"));
    }
}

void OscarTestServer::Frame(Connection& c, int channel, const std::string& payload) {
    const std::string frame = "*" + oscar::MakeByte(channel) + Word(c.sequence++) +
                              Word(static_cast<std::uint16_t>(payload.size())) + payload;
    c.socket->write(frame.data(), static_cast<qint64>(frame.size()));
}

void OscarTestServer::Read(QTcpSocket* socket) {
    auto it = connections_.find(socket);
    if (it == connections_.end()) return;
    it->second.frames.Append(socket->readAll().toStdString());
    while (auto frame = it->second.frames.Next()) {
        Handle(it->second, *frame);
        // A handler may have dropped this connection.
        it = connections_.find(socket);
        if (it == connections_.end()) return;
    }
}

void OscarTestServer::Closed(QTcpSocket* socket) {
    auto it = connections_.find(socket);
    if (it == connections_.end()) return;
    const Connection gone = it->second;
    connections_.erase(it);
    socket->deleteLater();
    if (stopping_) return;
    if (gone.role == Role::Chat && gone.room) {
        Broadcast(*gone.room, Snac(0x000E, 0x0004) + UserInfo(accounts_[gone.user].name));
    }
    if (gone.role == Role::Bos && !stopping_) {
        // The session is over: its rooms get a cut-short sign-off frame and
        // close. A BOS connection of the same name is a newer session.
        for (Connection* other : [&] {
                 std::vector<Connection*> mine;
                 for (auto& [s, c] : connections_) {
                     if (c.user == gone.user && c.role != Role::Auth && c.role != Role::Bos)
                         mine.push_back(&c);
                 }
                 return mine;
             }()) {
            const std::string fragment = "*" + oscar::MakeByte(4) + Word(other->sequence++);
            other->socket->write(fragment.data(), static_cast<qint64>(fragment.size()));
            other->socket->flush();
            other->socket->disconnectFromHost();
        }
    }
}

void OscarTestServer::Handle(Connection& c, const std::string& frame) {
    const int channel = static_cast<unsigned char>(frame[1]);
    const std::string payload = frame.substr(6);
    if (channel == 1) {
        HandleGreeting(c, payload);
        return;
    }
    if (channel == 4) {
        c.socket->disconnectFromHost();
        return;
    }
    if (channel == 5) {
        ++c.keepAlives;
        return;
    }
    if (channel != 2 || payload.size() < 10) return;
    const std::string key = oscar::SnacKey(payload);
    const std::string data = payload.substr(10);
    if (!Admit(c, key)) return;
    if (key == "00010017") {
        for (std::size_t i = 0; i + 4 <= data.size(); i += 4) {
            if (oscar::ReadWord(data.substr(i)) == 1 && *oscar::ReadWord(data.substr(i + 2)) >= 4)
                c.longRateClasses = true;
        }
    }
    switch (c.role) {
        case Role::Auth:
            HandleAuth(c, key, data);
            break;
        case Role::Bos:
            HandleBos(c, key, data);
            break;
        case Role::Unknown:
            break;
        default:
            HandleService(c, key, data);
            break;
    }
}

void OscarTestServer::HandleGreeting(Connection& c, const std::string& payload) {
    if (payload.size() <= 4) {
        c.role = Role::Auth;
        return;
    }
    std::string rest = payload.substr(4);
    const std::string cookie = Value(ParseAll(rest), "0006");
    auto ticket = tickets_.find(cookie);
    if (ticket == tickets_.end()) {
        c.socket->disconnectFromHost();
        return;
    }
    // The same name signing on again ends the older session.
    if (ticket->second.role == Role::Bos && Find(ticket->second.user, Role::Bos)) {
        SignOffSession(ticket->second.user);
    }
    c.role = ticket->second.role;
    c.user = ticket->second.user;
    if (c.role == Role::Chat) c.room = &rooms_[ticket->second.roomKey];
    tickets_.erase(ticket);

    if (c.role == Role::Bos) {
        // Families reached through service requests (000D, 000E) are not listed.
        Frame(c, 2,
              Snac(0x0001, 0x0003, 0x80000000) +
                  HexToBytes("0001000200030004000600080009000A000B00130015"));
        return;
    }
    const std::map<Role, std::uint16_t> family = {
        {Role::ChatNav, 0x000D}, {Role::Chat, 0x000E}, {Role::Admin, 0x0007}, {Role::Icon, 0x0010}};
    Frame(c, 2, Snac(0x0001, 0x0003, 0x80000000) + Word(1) + Word(family.at(c.role)));
}

void OscarTestServer::HandleAuth(Connection& c, const std::string& key, const std::string& data) {
    const oscar::TLVList tlvs = ParseAll(data);
    const std::string typed = Value(tlvs, "0001");
    const std::string name = text::NormalizeName(typed);
    auto account = accounts_.find(name);
    if (account == accounts_.end() && openSignOn_ && !name.empty()) {
        AddAccount(typed, "", "");
        account = accounts_.find(name);
    }
    if (key == "00170006") {
        if (account == accounts_.end()) {
            Frame(c, 2, Snac(0x0017, 0x0003) + Tlv("0008", Word(0x0001)));
            c.socket->disconnectFromHost();
            return;
        }
        Frame(c, 2,
              Snac(0x0017, 0x0007, 1) +
                  Word(static_cast<std::uint16_t>(account->second.key.size())) +
                  account->second.key);
        return;
    }
    if (key != "00170002" || account == accounts_.end()) return;
    const Account& a = account->second;
    const bool open = openSignOn_ && a.password.empty();
    if (!open && Value(tlvs, "0025") != oscar::LoginHash(a.key, a.password)) {
        Frame(c, 2, Snac(0x0017, 0x0003, 1) + Tlv("0001", typed) + Tlv("0008", Word(0x0005)));
        return;
    }
    std::string cookie = NewCookie(Role::Bos, name);
    std::string reply = Snac(0x0017, 0x0003, 1) + Tlv("0001", a.name) +
                        Tlv("0005", "127.0.0.1:" + std::to_string(Port())) + Tlv("0006", cookie);
    if (!a.email.empty()) reply += Tlv("0011", a.email);
    Frame(c, 2, reply);
}

void OscarTestServer::HandleBos(Connection& c, const std::string& key, const std::string& data) {
    if (key == "00010017") {
        Frame(c, 2, Snac(0x0001, 0x0018, 1) + data);
    } else if (key == "00010006") {
        Frame(c, 2, Snac(0x0001, 0x0007, 1) + RateClasses(c));
    } else if (key == "0001000E") {
        Frame(c, 2, Snac(0x0001, 0x000F, 0x0E) + UserInfo(accounts_[c.user].name));
    } else if (key == "00130002") {
        Frame(c, 2, Snac(0x0013, 0x0003, 2) + Tlv("0004", Word(0x0190)));
    } else if (key == "00130005") {
        Frame(c, 2,
              Snac(0x0013, 0x0006, 5) + HexToBytes("00"
                                                   "0000"
                                                   "00000000"));
    } else if (key == "00020002") {
        Frame(c, 2, Snac(0x0002, 0x0003, 0xFE) + Tlv("0001", Word(0x0400)));
    } else if (key == "00030002") {
        Frame(c, 2, Snac(0x0003, 0x0003, 0xFF) + Tlv("0001", Word(0x0258)));
    } else if (key == "00040004") {
        Frame(c, 2, Snac(0x0004, 0x0005, 4) + HexToBytes("00020000000B1F4003E703E700000000"));
    } else if (key == "00090002") {
        Frame(c, 2,
              Snac(0x0009, 0x0003, 9) + Tlv("0001", Word(0x00A0)) + Tlv("0002", Word(0x00A0)));
    } else if (key == "00020004") {
        const std::string profile = Value(ParseAll(data), "0002");
        if (!profile.empty()) profiles_[c.user] = profile;
    } else if (key == "00010002") {
        ++bosSetups_;
        // A statistics interval, which clients ignore.
        Frame(c, 2, Snac(0x000B, 0x0002) + Word(1));
    } else if (key == "00010004") {
        ServiceRequest(c, data);
    }
}

void OscarTestServer::ServiceRequest(Connection& c, const std::string& data) {
    if (data.size() < 2) return;
    const std::uint16_t family = *oscar::ReadWord(data);
    std::string roomKey;
    Role role = Role::Unknown;
    switch (family) {
        case 0x000D:
            role = Role::ChatNav;
            break;
        case 0x0007:
            role = Role::Admin;
            break;
        case 0x0010:
            role = Role::Icon;
            break;
        case 0x000E: {
            role = Role::Chat;
            const std::string block = Value(ParseAll(data.substr(2)), "0001");
            const std::size_t length = block.size() > 2 ? static_cast<unsigned char>(block[2]) : 0;
            const std::string cookie = block.substr(std::min<std::size_t>(3, block.size()), length);
            for (auto& [k, room] : rooms_) {
                if (room.cookie == cookie) roomKey = k;
            }
            if (roomKey.empty()) {
                // An unknown room cookie ends the whole session.
                c.socket->abort();
                return;
            }
            break;
        }
        default:
            Frame(c, 2, Snac(0x0001, 0x0001, 1) + Word(0x0008));
            return;
    }
    Frame(c, 2,
          Snac(0x0001, 0x0005, 1) + Tlv("000D", Word(family)) +
              Tlv("0005", serviceAddress_.empty() ? "127.0.0.1:" + std::to_string(Port())
                                                  : serviceAddress_) +
              Tlv("0006", NewCookie(role, c.user, roomKey)));
}

void OscarTestServer::HandleService(Connection& c, const std::string& key,
                                    const std::string& data) {
    if (key == "00010017") {
        Frame(c, 2, Snac(0x0001, 0x0018, 0x17) + data);
    } else if (key == "00010006") {
        Frame(c, 2, Snac(0x0001, 0x0007, 6) + RateClasses(c));
    } else if (key == "00010002") {
        if (c.role == Role::Chat) JoinRoom(c);
    } else if (c.role == Role::ChatNav) {
        HandleChatNav(c, key, data);
    } else if (c.role == Role::Chat) {
        HandleChat(c, key, data);
    }
}

void OscarTestServer::HandleChatNav(Connection& c, const std::string& key,
                                    const std::string& data) {
    if (key == "000D0002") {
        Frame(c, 2,
              Snac(0x000D, 0x0009, 2) + Tlv("0002", HexToBytes("0A")) +
                  Tlv("0003", Word(4) + Word(0)) + Tlv("0003", Word(5) + Word(0)));
        return;
    }
    if (key != "000D0008" || data.size() < 3) return;
    const int exchange = *oscar::ReadWord(data);
    std::size_t pos = 2 + 1 + static_cast<unsigned char>(data[2]) + 2 + 1 + 2;
    const std::string name = Value(ParseAll(data.substr(std::min(pos, data.size()))), "00D3");
    if (joinError_ != 0) {
        Frame(c, 2,
              Snac(0x000D, 0x0001, 8) + Word(static_cast<std::uint16_t>(joinError_)) +
                  Tlv("0008", Word(static_cast<std::uint16_t>(joinError_))));
        joinError_ = 0;
        return;
    }
    Room* room = nullptr;
    if (exchange == 4) {
        room = &RoomFor(name, 4);
    } else if (exchange == 5) {
        room = FindRoom(name, 5);
        if (!room) {
            Frame(c, 2, Snac(0x000D, 0x0001, 8) + Word(0x0014));
            return;
        }
    } else {
        Frame(c, 2, Snac(0x000D, 0x0001, 8) + Word(0x0008));
        return;
    }
    const std::string block = Word(static_cast<std::uint16_t>(room->exchange)) + Lp(room->cookie) +
                              Word(0) + HexToBytes("02") + Word(2) + Tlv("006A", room->name) +
                              Tlv("00D3", room->name);
    Frame(c, 2, Snac(0x000D, 0x0009, 8) + Tlv("0004", block));
}

void OscarTestServer::JoinRoom(Connection& c) {
    Room& room = *c.room;
    // Occupants first (this user included), then the room information.
    std::string occupants;
    for (const std::string& name : Occupants(room.name, room.exchange))
        occupants += UserInfo(name);
    Frame(c, 2, Snac(0x000E, 0x0003) + occupants);
    Frame(c, 2,
          Snac(0x000E, 0x0002) + Word(static_cast<std::uint16_t>(room.exchange)) + Lp(room.cookie) +
              Word(0) + HexToBytes("02") + Word(4) + Tlv("006A", room.name) + Tlv("00C9", Word(0)) +
              Tlv("00D1", Word(1024)) + Tlv("00D2", Word(100)));
    Broadcast(room, Snac(0x000E, 0x0003) + UserInfo(accounts_[c.user].name), &c);
}

void OscarTestServer::HandleChat(Connection& c, const std::string& key, const std::string& data) {
    if (key != "000E0005" || data.size() < 10 || !c.room) return;
    const oscar::TLVList tlvs = ParseAll(data.substr(10));
    // Only a sender that asks (TLV 0x0006) hears its own line back.
    const bool reflect = oscar::FindTLV(tlvs, HexToBytes("0006")).has_value();
    std::string block = Value(tlvs, "0005");
    std::string text = Value(ParseAll(block), "0001");
    std::string sender = accounts_[c.user].name;
    if (text.find("//roll") != std::string::npos) {
        // The server says a dice roll instead.
        sender = "OnlineHost";
        text = accounts_[c.user].name + " rolled 2 6-sided dice: " +
               std::to_string(QRandomGenerator::global()->bounded(1, 7)) + " " +
               std::to_string(QRandomGenerator::global()->bounded(1, 7));
        block = Tlv("0002", "us-ascii") + Tlv("0003", "en") + Tlv("0001", text);
    }
    Relay(*c.room, sender, block, reflect ? nullptr : &c);
}

void OscarTestServer::Relay(Room& room, const std::string& sender, const std::string& messageBlock,
                            const Connection* except) {
    Broadcast(room,
              Snac(0x000E, 0x0006) + std::string(8, '\0') + Word(3) +
                  Tlv("0003", UserInfo(sender)) + Tlv("0001", "") + Tlv("0005", messageBlock),
              except);
    const oscar::TLVList parts = ParseAll(messageBlock);
    const std::string charset = Value(parts, "0002");
    const RelayedLine line{room.name, sender, oscar::DecodeChatText(Value(parts, "0001"), charset),
                           charset};
    if (keepLines_) lines_.push_back(line);
    for (const auto& listener : lineListeners_)
        listener(line);
}

void OscarTestServer::Broadcast(Room& room, const std::string& snac, const Connection* except) {
    for (Connection* member : Members(room)) {
        if (member != except) Frame(*member, 2, snac);
    }
}

std::vector<OscarTestServer::Connection*> OscarTestServer::Members(const Room& room) {
    std::vector<Connection*> members;
    for (auto& [socket, c] : connections_) {
        if (c.role == Role::Chat && c.room == &room) members.push_back(&c);
    }
    return members;
}

std::vector<std::string> OscarTestServer::Occupants(const std::string& roomName,
                                                    int exchange) const {
    std::vector<std::string> names;
    auto it = rooms_.find(RoomKey(roomName, exchange));
    if (it == rooms_.end()) return names;
    names = it->second.players;
    for (const auto& [socket, c] : connections_) {
        if (c.role == Role::Chat && c.room == &it->second)
            names.push_back(accounts_.at(c.user).name);
    }
    return names;
}

OscarTestServer::Room& OscarTestServer::RoomFor(const std::string& name, int exchange) {
    Room& room = rooms_[RoomKey(name, exchange)];
    if (room.cookie.empty()) {
        room.name = name;
        room.exchange = exchange;
        room.cookie = std::to_string(exchange) + "-0-" + name;
    }
    return room;
}

OscarTestServer::Room* OscarTestServer::FindRoom(const std::string& name, int exchange) {
    auto it = rooms_.find(RoomKey(name, exchange));
    return it == rooms_.end() ? nullptr : &it->second;
}

void OscarTestServer::AddScriptedPlayer(const std::string& roomName, const std::string& name,
                                        int exchange) {
    Room& room = RoomFor(roomName, exchange);
    room.players.push_back(name);
    Broadcast(room, Snac(0x000E, 0x0003) + UserInfo(name));
}

void OscarTestServer::RemoveScriptedPlayer(const std::string& roomName, const std::string& name,
                                           int exchange) {
    Room* room = FindRoom(roomName, exchange);
    if (!room) return;
    std::erase(room->players, name);
    Broadcast(*room, Snac(0x000E, 0x0004) + UserInfo(name));
}

void OscarTestServer::PlayerSays(const std::string& roomName, const std::string& name,
                                 const std::string& text, int exchange) {
    Room* room = FindRoom(roomName, exchange);
    if (!room) return;
    Relay(*room, name, Tlv("0002", "us-ascii") + Tlv("0003", "en") + Tlv("0001", text));
}

void OscarTestServer::PlayerSaysBlock(const std::string& roomName, const std::string& name,
                                      const std::string& messageBlock, int exchange) {
    if (Room* room = FindRoom(roomName, exchange)) Relay(*room, name, messageBlock);
}

oscar::RateClass OscarTestServer::RateClassParams(int id) const {
    const auto& row = kRateTable[std::clamp(id, 1, kRateClasses) - 1];
    const auto level = [this](std::uint32_t ms) {
        return ms / static_cast<std::uint32_t>(rateDivisor_);
    };
    return {static_cast<std::uint16_t>(row[0]),
            row[1],
            level(row[2]),
            level(row[3]),
            level(row[4]),
            level(row[5]),
            level(row[6]),
            level(row[6])};
}

std::string OscarTestServer::RateFields(const Connection& c, int id) const {
    const oscar::RateClass k = RateClassParams(id);
    const Connection::Rate& rate = c.rates[static_cast<std::size_t>(id - 1)];
    std::string fields =
        Word(k.id) + oscar::DWord(k.window) + oscar::DWord(k.clear) + oscar::DWord(k.alert) +
        oscar::DWord(k.limit) + oscar::DWord(k.disconnect) +
        oscar::DWord(static_cast<std::uint32_t>(rate.average)) + oscar::DWord(k.max);
    if (c.longRateClasses) {
        fields += oscar::DWord(static_cast<std::uint32_t>(clock_.elapsed() - rate.last)) +
                  oscar::MakeByte(rate.limited ? 1 : 0);
    }
    return fields;
}

std::string OscarTestServer::RateClasses(const Connection& c) const {
    std::string reply = Word(kRateClasses);
    for (int id = 1; id <= kRateClasses; ++id)
        reply += RateFields(c, id);
    reply += Word(1) + Word(std::size(kClassOneMembers));
    for (std::uint32_t pair : kClassOneMembers)
        reply += oscar::DWord(pair);
    reply += Word(2) + Word(1) + oscar::DWord(0x000E0005);
    for (std::uint16_t id = 3; id <= kRateClasses; ++id)
        reply += Word(id) + Word(0);
    return reply;
}

bool OscarTestServer::Admit(Connection& c, const std::string& key) {
    const int id = key == "000E0005" ? 2 : 1;
    const oscar::RateClass k = RateClassParams(id);
    Connection::Rate& rate = c.rates[static_cast<std::size_t>(id - 1)];
    const qint64 now = clock_.elapsed();
    rate.average = std::min<double>(
        k.max, ((k.window - 1) * rate.average + static_cast<double>(now - rate.last)) / k.window);
    rate.last = now;
    const auto notify = [&](std::uint16_t code) {
        rateNotices_.push_back(code);
        Frame(c, 2, Snac(0x0001, 0x000A) + Word(code) + RateFields(c, id));
    };
    if (rate.average < k.disconnect) {
        ++dropped_;
        c.socket->abort();
        return false;
    }
    if (rate.limited && rate.average >= k.clear) {
        rate.limited = rate.alerted = false;
        notify(4);
    } else if (!rate.limited && rate.average < k.limit) {
        rate.limited = true;
        notify(3);
    }
    if (rate.limited) {
        ++dropped_;
        return false;
    }
    if (!rate.alerted && rate.average < k.alert) {
        rate.alerted = true;
        notify(2);
    } else if (rate.alerted && rate.average >= k.clear) {
        rate.alerted = false;
        notify(4);
    }
    return true;
}

int OscarTestServer::KeepAlives(const std::string& screenName, Role role) const {
    const std::string name = text::NormalizeName(screenName);
    for (const auto& [socket, c] : connections_) {
        if (c.user == name && c.role == role) return c.keepAlives;
    }
    return 0;
}

std::string OscarTestServer::NewCookie(Role role, const std::string& user,
                                       const std::string& roomKey) {
    // BOS cookies are 256 bytes, as real ones are; service cookies shorter.
    const std::size_t size = role == Role::Bos ? 256 : 32;
    std::string cookie = std::to_string(++cookieCount_) + ":";
    while (cookie.size() < size) {
        cookie.push_back(static_cast<char>(QRandomGenerator::global()->bounded(256)));
    }
    tickets_[cookie] = {role, user, roomKey};
    return cookie;
}

OscarTestServer::Connection* OscarTestServer::Find(const std::string& user, Role role) {
    const std::string name = text::NormalizeName(user);
    for (auto& [socket, c] : connections_) {
        if (c.user == name && c.role == role && !c.signedOff) return &c;
    }
    return nullptr;
}

void OscarTestServer::PauseSession(const std::string& screenName) {
    if (Connection* c = Find(screenName, Role::Bos)) Frame(*c, 2, Snac(0x0001, 0x000B));
}

void OscarTestServer::ResumeSession(const std::string& screenName) {
    if (Connection* c = Find(screenName, Role::Bos)) Frame(*c, 2, Snac(0x0001, 0x000D));
}

void OscarTestServer::MigrateSession(const std::string& screenName) {
    Connection* c = Find(screenName, Role::Bos);
    if (!c) return;
    Frame(*c, 2,
          Snac(0x0001, 0x0012) + Word(0) +
              Tlv("0005", "127.0.0.1:" + std::to_string(MigrationPort())) +
              Tlv("0006", NewCookie(Role::Bos, c->user)));
}

void OscarTestServer::SignOffSession(const std::string& screenName) {
    Connection* c = Find(screenName, Role::Bos);
    if (!c) return;
    if (truncatedSignOff_) {
        const std::string fragment = "*" + oscar::MakeByte(4) + Word(c->sequence++);
        c->socket->write(fragment.data(), static_cast<qint64>(fragment.size()));
    } else {
        Frame(*c, 4,
              Tlv("0009", HexToBytes("01")) + Tlv("000B", "https://127.0.0.1/signed-on-elsewhere"));
    }
    // No longer this name's session, even before the close is seen.
    c->signedOff = true;
    c->socket->flush();
    c->socket->disconnectFromHost();
}

void OscarTestServer::Shutdown() {
    stopping_ = true;
    server_.close();
    migrationServer_.close();
    // Closing may erase a connection at once, so the sockets are listed first.
    std::vector<QTcpSocket*> sockets;
    for (auto& [socket, c] : connections_)
        sockets.push_back(socket);
    // BOS connections first: their sign-off frame is the news.
    for (const bool bos : {true, false}) {
        for (QTcpSocket* socket : sockets) {
            auto it = connections_.find(socket);
            if (it == connections_.end() || (it->second.role == Role::Bos) != bos) continue;
            if (bos) Frame(it->second, 4, "");
            socket->flush();
            socket->disconnectFromHost();
        }
    }
}

void OscarTestServer::CloseConnection(const std::string& screenName, Role role) {
    if (Connection* c = Find(screenName, role)) c->socket->abort();
}

void OscarTestServer::SendRaw(const std::string& screenName, Role role, const std::string& bytes) {
    if (Connection* c = Find(screenName, role)) {
        c->socket->write(bytes.data(), static_cast<qint64>(bytes.size()));
    }
}

std::vector<std::string> OscarTestServer::SignedOn() const {
    std::vector<std::string> names;
    for (const auto& [socket, c] : connections_) {
        if (c.role == Role::Bos && !c.signedOff) names.push_back(c.user);
    }
    return names;
}

std::string OscarTestServer::Profile(const std::string& screenName) const {
    auto it = profiles_.find(text::NormalizeName(screenName));
    return it == profiles_.end() ? std::string() : it->second;
}

}  // namespace testserver
