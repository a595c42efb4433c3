// Frames on the service connections (chat navigation, chat rooms, admin,
// buddy icons) and the BOS replies of the other services: instant messages,
// user information, e-mail lookup.
#include <algorithm>

#include "oscar/charset.h"
#include "oscar/frame_reading.h"
#include "oscar/tolsock.h"
#include "text/text.h"

namespace oscar {

namespace {

std::string ChatNavigationErrorText(int subcode) {
    switch (subcode) {
        case 0x12:
            return "Join chat failed, you are already in the max amount of chats Oscar allows.";
        case 0x33:
            return "Join chat failed, invalid chat name.";
        case 0x32:
            return "Join chat failed, objectional chat name.";
        default:
            return "Join chat failed, unknown error.";
    }
}

// A navigation error without a subcode, by its error code.
std::string ChatNavigationRefusalText(int code) {
    switch (code) {
        case 0x08:
            return "Join chat failed, the server offers no rooms on that exchange.";
        case 0x14:
            return "Join chat failed, no such room on that exchange.";
        default:
            return "Join chat failed, the chat navigation server refused the room.";
    }
}

// A user record from 1-based position `pos`: name length, name, warning
// level, TLV count. Returns the name and moves `pos` past the count.
struct UserRecord {
    std::string name;
    std::uint16_t warning = 0;
    std::uint16_t tlvCount = 0;
};

UserRecord ReadUserRecord(std::string_view frame, std::size_t& pos) {
    UserRecord record;
    const std::size_t length = ByteAt(frame, pos).value_or(0);
    record.name = std::string(Piece(frame, pos + 1, length));
    pos += 1 + length;
    record.warning = ReadWord(Piece(frame, pos, 2)).value_or(0);
    record.tlvCount = ReadWord(Piece(frame, pos + 2, 2)).value_or(0);
    pos += 4;
    return record;
}

// A number of tenths rounded to the nearest whole number, halves to even.
int RoundTenths(int tenths) {
    const int whole = tenths / 10, rest = tenths % 10;
    if (rest > 5 || (rest == 5 && whole % 2 == 1)) return whole + 1;
    return whole;
}

// A 32-bit count that does not fit a signed field is reported as 0.
std::int32_t Signed32(std::optional<std::uint32_t> value) {
    return value && *value < 0x80000000u ? static_cast<std::int32_t>(*value) : 0;
}

std::string LookupErrorText(std::string_view code, bool admin) {
    if (code == std::string_view("\x00\x0E", 2)) return "No e-mail entered.";
    if (admin) return "Unknown Admin Error.";
    if (code == std::string_view("\x00\x14", 2)) return "No screennames found.";
    return "Unknown e-mail lookup error.";
}

}  // namespace

void TolSock::ClearConnectionRedirect(int index) {
    Connection& c = Conn(index);
    c.cookie.clear();
    c.family.clear();
    c.families.clear();
}

void TolSock::ParseServiceFrame(int index, const std::string& frame) {
    const auto channel = ByteAt(frame, 2);
    if (channel == 1) {
        SendPacket(index, 1, HexToBytes("00000001") + MakeTLV("0006", 2, Conn(index).cookie));
    }
    if (channel == 4) {
        // A sign-off frame: the connection is over, as when it is lost.
        LoseConnection(index, "signed off by the server");
        return;
    }
    if (join_.active && (index == join_.navIndex || index == join_.chatIndex)) {
        join_.secondsLeft = kStepSeconds;
    }

    const std::string key = SnacKey(Piece(frame, 7, 4));
    if (key == "00010003") {
        SendPacket(index, 2,
                   HexToBytes("00010017000000000017") + BuildFamilyVersions(Conn(index).families));
    } else if (key == "00010018") {
        ServiceVersions(index, frame);
    } else if (key == "00010007") {
        ReadRates(index, frame);
        ServiceRates(index);
    } else if (key == "0001000A") {
        RateChange(index, frame);
    } else if (key == "000D0009") {
        ChatNavigationReply(index, frame);
    } else if (key == "000D0001") {
        ChatNavigationError(frame);
    } else if (key == "000E0002") {
        RoomInformation(index, frame);
    } else if (key == "000E0003" || key == "000E0004") {
        Occupants(index, frame, key == "000E0003");
    } else if (key == "000E0006") {
        ChatLine(index, frame);
    } else if (key == "00070001") {
        AdminError(frame);
    } else if (key == "00070003") {
        AdminInformation(frame);
    } else if (key == "00070005") {
        AdminChange(frame);
    } else if (key == "00100005" || key == "00100007") {
        BuddyIcon(frame);
    }
}

void TolSock::ServiceVersions(int index, const std::string& frame) {
    TLVList& families = Conn(index).families;
    families.clear();
    const std::string data = SnacData(frame);
    for (std::size_t pos = 1; pos <= data.size(); pos += 4) {
        families.emplace_back(Piece(data, pos, 2));
        families.emplace_back(Piece(data, pos + 2, 2));
    }
    SendPacket(index, 2, HexToBytes("00010006000000000006"));
}

void TolSock::ServiceRates(int index) {
    SendPacket(index, 2, HexToBytes("0001000800000000000800010002000300040005"));
    const std::string tag = sockets_.Tag(index);
    const std::string clientReady =
        HexToBytes("00010002000000000001") + BuildClientReady(Conn(index).families);
    if (tag == "[Chat]connecting") {
        // The room's record is made now; its details come with the room
        // information.
        Chats room;
        room.ChatName = strPendingChatName_;
        room.ChatIndex = index;
        chat_.push_back(room);
        if (join_.active && index == join_.chatIndex) {
            JoinStep("waiting for the room information from the " + ServerOf(index));
        }
        SendPacket(index, 2, clientReady);
        ClearConnectionRedirect(index);
        return;
    }
    if (tag == "[Chat_Navigation]connecting")
        SendPacket(index, 2, HexToBytes("000D0002000000000002"));

    const std::string family = Conn(index).family;
    sockets_.SetTag(index, FamilyName(HexToBytes(family)) + "connected");
    SendPacket(index, 2, clientReady);
    if (family == "0007") intAdminIndex_ = index;
    if (family == "0010") intIconIndex_ = index;
    if (family == "0018") intEmailIndex_ = index;
    ClearConnectionRedirect(index);
    SendPendingAdmin();
    SendPendingIconRequest();
}

void TolSock::ChatNavigationReply(int index, const std::string& frame) {
    std::string data = SnacData(frame);
    TLVList tlvs;
    ParseTLVs(data, tlvs);
    // Only a reply that carries a room (TLV 0x0004) is a room reply; the
    // rights reply carries none.
    const std::string* room = nullptr;
    for (std::size_t i = 0; i + 1 < tlvs.size(); i += 2) {
        if (BytesToHex(tlvs[i]) == "0004") {
            room = &tlvs[i + 1];
            break;
        }
    }
    if (!room) {
        if (!blnCreatePending_) return;
        // The rights reply on a connection opened for a join: the join's
        // room request follows at once.
        blnCreatePending_ = false;
        intChatNavIndex_ = index;
        SendPacket(index, 2,
                   HexToBytes("0001000200000000000100010004001008E5000D0001001008E5") +
                       BuildClientReady(Conn(index).families));
        sockets_.SetTag(index, "[Chat_Navigation]connected");
        ClearConnectionRedirect(index);
        if (join_.active) {
            join_.navIndex = index;
            JoinStep("waiting for the room from the " + ServerOf(index));
        }
        SendRoomRequest(index);
        return;
    }
    // A room nobody asked for is not joined.
    if (!join_.active) return;
    // The room block: exchange (2), cookie length (1), cookie, ...
    const std::size_t cookieLength = ByteAt(*room, 3).value_or(0);
    const std::string cookie(Piece(*room, 4, cookieLength));
    const auto exchange = MakeWord(intPendingExchange_);
    // Asking for a chat service without a cookie ends the whole session on
    // real servers.
    if (cookie.empty() || !exchange) {
        FailJoin("Join chat failed, the " + ServerOf(index) + " sent a room without a cookie.", 0,
                 "000D", false);
        return;
    }
    JoinStep("asking the BOS server for the chat service");
    SendPacket(0, 2,
               HexToBytes("00010004000000000001000E") +
                   MakeTLV("0001", 2,
                           *exchange + MakeByte(static_cast<long long>(cookie.size())) + cookie +
                               std::string(2, '\0')));
}

void TolSock::ChatNavigationError(const std::string& frame) {
    const std::string data = SnacData(frame);
    const std::string code = BytesToHex(Piece(data, 1, 2));
    std::string rest(From(data, 3));
    TLVList tlvs;
    ParseTLVs(rest, tlvs);
    std::vector<std::uint16_t> subcodes;
    for (std::size_t i = 0; i + 1 < tlvs.size(); i += 2) {
        if (BytesToHex(tlvs[i]) != "0008") continue;
        if (const auto subcode = ReadWord(tlvs[i + 1])) subcodes.push_back(*subcode);
    }
    const auto subcode =
        subcodes.empty() ? std::nullopt : std::optional<std::uint16_t>(subcodes.front());
    if (join_.active) {
        // Any navigation error answers the join under way, with or without
        // a subcode: real servers refuse an unknown room with none.
        if (subcode) {
            FailJoin(ChatNavigationErrorText(*subcode), *subcode, code, false);
        } else {
            const int error = ReadWord(Piece(data, 1, 2)).value_or(0);
            FailJoin(ChatNavigationRefusalText(error), error, code, false);
        }
        return;
    }
    for (const std::uint16_t each : subcodes)
        events_->Error(ChatNavigationErrorText(each), each, 0, code);
}

void TolSock::RoomInformation(int index, const std::string& frame) {
    auto room = std::find_if(chat_.begin(), chat_.end(),
                             [index](const Chats& c) { return c.ChatIndex == index; });
    // Room information on a connection that made no room is not a join.
    if (room == chat_.end()) return;

    const std::size_t cookieLength = ByteAt(frame, 19).value_or(0);
    std::string tlvData(From(frame, 25 + cookieLength));
    TLVList tlvs;
    ParseTLVs(tlvData, tlvs);
    for (std::size_t i = 0; i + 1 < tlvs.size(); i += 2) {
        const std::string type = BytesToHex(tlvs[i]);
        const std::string& value = tlvs[i + 1];
        if (type == "00D2" && value.size() >= 2) {
            room->MaxPeople = static_cast<unsigned char>(value[1]);
        } else if (type == "00D1") {
            if (const auto length = ReadWord(value)) room->MaxMessageLength = *length;
        }
    }
    room->Cookie = std::string(Piece(frame, 20, cookieLength));
    room->ChatName = strPendingChatName_;
    room->Exchange = intPendingExchange_;
    room->Instance = intPendingInstance_;
    room->DetailLevel = 2;
    room->ChatIndex = index;
    sockets_.SetTag(index, "[Chat]connected");
    if (join_.active && index == join_.chatIndex) join_ = PendingJoin{};
    const Chats joined = *room;
    events_->JoinedChat(joined.ChatName, joined.Exchange, joined.Instance, index, joined.MaxPeople,
                        joined.MaxMessageLength);
}

void TolSock::Occupants(int index, const std::string& frame, bool joined) {
    std::size_t pos = 17;
    while (pos <= frame.size()) {
        const UserRecord user = ReadUserRecord(frame, pos);
        for (int t = 0; t < user.tlvCount && pos <= frame.size(); ++t) {
            pos += 4 + ReadWord(Piece(frame, pos + 2, 2)).value_or(0);
        }
        if (joined) {
            events_->UserJoinedChat(index, user.name);
        } else {
            events_->UserLeftChat(index, user.name);
        }
    }
}

void TolSock::ChatLine(int index, const std::string& frame) {
    std::string data(From(frame, 27));
    TLVList tlvs;
    ParseTLVs(data, tlvs);
    std::string senderBlock, information;
    for (std::size_t i = 0; i + 1 < tlvs.size(); i += 2) {
        const std::string type = BytesToHex(tlvs[i]);
        if (type == "0003") senderBlock = tlvs[i + 1];
        if (type == "0005") information = tlvs[i + 1];
    }
    TLVList parts;
    ParseTLVs(information, parts);
    // The character set may come before or after the text; without one the
    // text is us-ascii, whatever an earlier line was labelled.
    const auto charset = FindTLV(parts, HexToBytes("0002"));
    const auto text = FindTLV(parts, HexToBytes("0001"));
    if (charset) strChatEncoding_ = *charset;
    if (!text) return;
    const std::size_t nameLength = ByteAt(senderBlock, 1).value_or(0);
    const std::string sender(Piece(senderBlock, 2, nameLength));
    events_->ChatMessage(index, sender, DecodeChatText(*text, charset.value_or("us-ascii")));
}

void TolSock::IncomingIM(const std::string& frame) {
    if (ByteAt(frame, 26) != 1) return;
    std::size_t pos = 27;
    const UserRecord sender = ReadUserRecord(frame, pos);
    std::string data(From(frame, pos));
    TLVList tlvs;
    ParseTLVsCounted(data, sender.tlvCount, tlvs);
    tlvs.clear();
    ParseTLVs(data, tlvs);
    // A message without a text fragment is reported with an empty text.
    std::string text;
    for (std::size_t i = 0; i + 1 < tlvs.size(); i += 2) {
        if (BytesToHex(tlvs[i]) != "0002") continue;
        std::string messageData = tlvs[i + 1];
        TLVList parts;
        ParseTLVs(messageData, parts);
        for (std::size_t j = 0; j + 1 < parts.size(); j += 2) {
            if (BytesToHex(parts[j]) == "0101") text = text::StripTags(From(parts[j + 1], 5));
        }
        break;
    }
    events_->InstantMessage(sender.name, text, 1);
}

void TolSock::IcbmError(const std::string& frame) {
    if (Piece(frame, 17, 2) == std::string_view("\x00\x04", 2)) {
        events_->Error("User not available", 4, 0, "0004");
    }
}

void TolSock::UserInformation(const std::string& frame) {
    std::size_t pos = 17;
    const UserRecord user = ReadUserRecord(frame, pos);
    std::string data(From(frame, pos));
    TLVList tlvs;
    ParseTLVsCounted(data, user.tlvCount, tlvs);
    std::string userClass;
    std::int32_t idle = 0, online = 0;
    for (std::size_t i = 0; i + 1 < tlvs.size(); i += 2) {
        const std::string type = BytesToHex(tlvs[i]);
        if (type == "0001") {
            if (const auto value = ReadWord(tlvs[i + 1])) userClass = std::to_string(*value);
        } else if (type == "000F") {
            idle = Signed32(ReadDWord(tlvs[i + 1]));
        } else if (type == "0003") {
            online = Signed32(ReadDWord(tlvs[i + 1]));
        }
    }
    tlvs.clear();
    ParseTLVs(data, tlvs);
    // The profile's encoding shares its field with the chat's character set.
    std::string encoding = strChatEncoding_, profile;
    for (std::size_t i = 0; i + 1 < tlvs.size(); i += 2) {
        const std::string type = BytesToHex(tlvs[i]);
        if (type == "0001") encoding = tlvs[i + 1];
        if (type == "0002") profile = tlvs[i + 1];
    }
    events_->IncomingUserInfo(user.name, RoundTenths(user.warning), idle, online, userClass,
                              encoding, profile);
    strChatEncoding_.clear();
}

void TolSock::EmailLookupError(const std::string& frame) {
    const std::string_view code = Piece(frame, 17, 2);
    events_->Error(LookupErrorText(code, false), ByteAt(frame, 18).value_or(0), 0, "000A");
}

void TolSock::EmailLookupReply(const std::string& frame) {
    std::string data = SnacData(frame);
    TLVList tlvs;
    ParseTLVs(data, tlvs);
    std::vector<std::string> names;
    for (std::size_t i = 1; i < tlvs.size(); i += 2)
        names.push_back(tlvs[i]);
    events_->EmailLookupResults(names);
}

void TolSock::AdminError(const std::string& frame) {
    const std::string_view code = Piece(frame, 17, 2);
    events_->Error(LookupErrorText(code, true), ByteAt(frame, 18).value_or(0), 0, "0007");
}

void TolSock::AdminInformation(const std::string& frame) {
    const int permission = ByteAt(frame, 18).value_or(0);
    std::string data(From(frame, 21));
    TLVList tlvs;
    ParseTLVs(data, tlvs);
    for (std::size_t i = 0; i + 1 < tlvs.size(); i += 2) {
        const std::string type = BytesToHex(tlvs[i]);
        const std::string value = tlvs[i + 1];
        if (type == "0001") {
            events_->FormattedScreennameResults(value, permission);
        } else if (type == "0011") {
            events_->EmailResults(value, permission);
        } else if (type == "0013") {
            if (const auto regType = ReadWord(value)) {
                events_->RegistrationResults(*regType, permission);
            }
        }
    }
}

void TolSock::AdminChange(const std::string& frame) {
    const int permission = ByteAt(frame, 18).value_or(0);
    std::string data(From(frame, 21));
    TLVList tlvs;
    ParseTLVs(data, tlvs);
    bool success = true;
    for (std::size_t i = 0; i < tlvs.size(); i += 2) {
        if (BytesToHex(tlvs[i]) == "0008") success = false;
    }
    for (std::size_t i = 0; i < tlvs.size(); i += 2) {
        const std::string type = BytesToHex(tlvs[i]);
        if (type == "0001") events_->ScreennameFormatted(success, permission);
        if (type == "0011") events_->EmailUpdated(success, permission);
        if (type == "0013") events_->RegistrationStatusUpdated(success, permission);
        if (type == "0002") events_->PasswordUpdated(success, permission);
    }
}

void TolSock::BuddyIcon(const std::string& frame) {
    const std::size_t nameLength = ByteAt(frame, 17).value_or(0);
    const std::string buddy(Piece(frame, 18, nameLength));
    const std::size_t lengthAt = 18 + nameLength + 21;
    const std::size_t iconLength = ReadWord(Piece(frame, lengthAt, 2)).value_or(0);
    events_->IncomingBuddyIcon(buddy, std::string(Piece(frame, lengthAt + 2, iconLength)));
}

}  // namespace oscar
