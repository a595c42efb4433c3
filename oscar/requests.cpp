// The requests the program makes of the OSCAR servers.
#include <algorithm>

#include "oscar/charset.h"
#include "oscar/tolsock.h"
#include "text/text.h"

namespace oscar {

namespace {

// A 16-bit field of a request; out of range it makes the request unsendable.
std::optional<std::string> Word16(long long value) {
    return MakeWord(value);
}

// A string preceded by its 1-byte length; nullopt over 255 bytes.
std::optional<std::string> LengthPrefixed(const std::string& text) {
    if (text.size() > 255) return std::nullopt;
    return MakeTLV("", 1, text);
}

// A TLV with a 2-byte length; nullopt over 65535 bytes.
std::optional<std::string> Tlv(const char* type, const std::string& value) {
    if (value.size() > 0xFFFF) return std::nullopt;
    return MakeTLV(type, 2, value);
}

bool SameRoom(const Chats& room, const std::string& normalizedName, int exchange) {
    return text::NormalizeName(room.ChatName) == normalizedName &&
           (exchange == 0 || room.Exchange == exchange);
}

}  // namespace

void TolSock::Login(const std::string& strUser, const std::string& strPassword, long long lngPort,
                    bool /*blnMD5Login*/, bool /*blnInvisible*/, const std::string& strAuthServer) {
    ResetSockets();
    screenName_ = strUser;
    password_ = strPassword;
    authHost_ = text::NormalizeName(strAuthServer);
    authPort_ = lngPort;
    blnAuthorizing_ = true;
    // A new sign-on starts from scratch, so that it ends in LoggedIn again.
    blnLoggedIn_ = false;
    blnPaused_ = false;
    migrating_ = false;
    signOnServer_ = "authorization server " + authHost_ + ":" + std::to_string(lngPort);
    sockets_.SetTag(0, "[Auth]connecting");
    SignOnStatus("Connecting to Auth server...");
    sockets_.Connect(0, authHost_, static_cast<int>(lngPort));
}

void TolSock::LogOff() {
    ResetAll();
    events_->LoggedOff();
}

void TolSock::SendIM(const std::string& strScreenname, const std::string& strMessage) {
    const auto name = LengthPrefixed(strScreenname);
    const auto text = Tlv("0101", HexToBytes("00000000") + strMessage);
    if (!name || !text) return;
    const auto data = Tlv("0002", MakeTLV("0501", 2, HexToBytes("010102")) + *text);
    if (!data) return;
    SendPacket(0, 2, HexToBytes("0004000600000000000400000000000000010001") + *name + *data);
}

void TolSock::JoinChat(const std::string& strChatName, int intExchange, int intInstance) {
    // One join at a time: a second navigation connection's rights reply
    // would be taken for the first join's room.
    if (join_.active) return;
    strPendingChatName_ = text::TrimSpaces(strChatName);
    intPendingExchange_ = intExchange;
    intPendingInstance_ = intInstance;
    join_.active = true;
    if (intChatNavIndex_ != 0) {
        join_.navIndex = intChatNavIndex_;
        JoinStep("waiting for the room from the " + ServerOf(intChatNavIndex_));
        SendRoomRequest(intChatNavIndex_);
        return;
    }
    JoinStep("asking the BOS server for the chat navigation service");
    SendServiceRequest("000D");
    blnCreatePending_ = true;
}

void TolSock::SendRoomRequest(int index) {
    const auto exchange = Word16(intPendingExchange_);
    const auto instance = Word16(intPendingInstance_);
    const auto name = Tlv("00D3", strPendingChatName_);
    if (!exchange || !instance || !name) return;
    SendPacket(index, 2,
               HexToBytes("000D0008000000000008") + *exchange + MakeTLV("", 1, "create") +
                   *instance + HexToBytes("010003") + MakeTLV("00D6", 2, "us-ascii") + *name +
                   MakeTLV("00D7", 2, "en"));
}

void TolSock::SendServiceRequest(const char* familyHex) {
    SendPacket(0, 2, HexToBytes("00010004000000000001") + HexToBytes(familyHex));
}

void TolSock::LeaveChat(int lngChatIndex, const std::string& strChatName, int intExchange) {
    if (!strChatName.empty()) {
        // Every room of that name (on that exchange, when one is given).
        const std::string name = text::NormalizeName(strChatName);
        for (;;) {
            auto room = std::find_if(chat_.begin(), chat_.end(), [&](const Chats& c) {
                return SameRoom(c, name, intExchange);
            });
            if (room == chat_.end()) return;
            const Chats left = *room;
            chat_.erase(room);
            events_->LeftChat(left.ChatName, left.Exchange, left.Instance, left.ChatIndex);
            CloseSock(left.ChatIndex);
        }
    }
    if (lngChatIndex == 0 || !ValidIndex(lngChatIndex) || !sockets_.Exists(lngChatIndex)) return;
    RemoveRoomsAndRaiseLeft(lngChatIndex);
    CloseSock(lngChatIndex);
}

void TolSock::SendChat(int intChatIndex, const std::string& strMessage,
                       const std::string& strChatName, int intExchange) {
    // Labelled with the narrowest character set that holds it, so that
    // clients which decode the label show the line as it was written.
    const LabelledText labelled = LabelChatText(strMessage);
    const auto text = Tlv("0001", labelled.bytes);
    const std::string packet =
        HexToBytes("000E0005000000000005000000000000") + Word(chatCounter_) + HexToBytes("0003") +
        MakeTLV("0001", 2, "") + MakeTLV("0006", 2, "") +
        (text ? MakeTLV("0005", 2,
                        MakeTLV("0002", 2, labelled.charset) + MakeTLV("0003", 2, "en") + *text)
              : std::string());
    // The message cookie counts 0..32000, then starts again at 1.
    if (++chatCounter_ > 32000) chatCounter_ = 1;
    if (!text || packet.size() > 0xFFFF) return;

    if (!strChatName.empty()) {
        const std::string name = text::NormalizeName(strChatName);
        std::vector<int> rooms;
        for (const Chats& room : chat_) {
            if (SameRoom(room, name, intExchange)) rooms.push_back(room.ChatIndex);
        }
        for (int index : rooms)
            SendPacket(index, 2, packet);
        return;
    }
    if (intChatIndex == 0 || !ValidIndex(intChatIndex) || !sockets_.Exists(intChatIndex)) return;
    SendPacket(intChatIndex, 2, packet);
}

void TolSock::EmailLookup(const std::string& strEmail) {
    SendPacket(0, 2, HexToBytes("000A0002000000000002") + strEmail);
}

void TolSock::GetUserInfo(const std::string& strScreenname, int TheType) {
    const auto type = MakeDWord(TheType);
    const auto name = LengthPrefixed(strScreenname);
    if (!type || !name) return;
    SendPacket(0, 2, HexToBytes("00020015000000000015") + *type + *name);
}

void TolSock::SetProfile(const std::string& strProfile) {
    const auto profile = Tlv("0002", strProfile);
    if (!profile) return;
    SendPacket(0, 2,
               HexToBytes("00020004000000000004") +
                   MakeTLV("0001", 2, "text/x-aolrtf; charset=\"us-ascii\"") + *profile);
}

void TolSock::SetIdle(double IdleSeconds) {
    SendPacket(0, 2,
               HexToBytes(IdleSeconds <= 0 ? "0001001100000000001100000000"
                                           : "0001001100000000001100000001"));
}

void TolSock::SetCapabilities(const std::vector<std::string>& UUIDs) {
    const auto block = Tlv("0005", BuildCapabilities(1, UUIDs, capabilities_));
    if (!block) return;
    SendPacket(0, 2, HexToBytes("00020004000000000004") + *block);
}

void TolSock::InviteChatBuddy(const std::string& strBuddy) {
    const auto buddy = LengthPrefixed(strBuddy);
    if (!buddy) return;
    std::string packet =
        HexToBytes("00040006000000000006") + HexToBytes("00000000000000010002") + *buddy;
    // The invitation names the first joined room, so that the buddy's client
    // can join it: a chat rendezvous with the room's exchange, cookie and
    // instance and a short message.
    if (!chat_.empty()) {
        const Chats& room = chat_.front();
        const auto exchange = Word16(room.Exchange);
        const auto instance = Word16(room.Instance);
        const auto cookie = LengthPrefixed(room.Cookie);
        if (exchange && instance && cookie) {
            const std::string rendezvous = HexToBytes("0000") + HexToBytes("0000000000000001") +
                                           HexToBytes("748F2420628711D18222444553540000") +
                                           MakeTLV("000A", 2, Word(1)) + MakeTLV("000F", 2, "") +
                                           MakeTLV("000C", 2, "Join me in this chat.") +
                                           MakeTLV("2711", 2, *exchange + *cookie + *instance);
            packet += MakeTLV("0005", 2, rendezvous);
        }
    }
    SendPacket(0, 2, packet);
}

bool TolSock::SendAdmin(const std::string& packet) {
    if (intAdminIndex_ == 0) {
        SendServiceRequest("0007");
        return false;
    }
    SendPacket(intAdminIndex_, 2, packet);
    return true;
}

void TolSock::FormatScreenname(const std::string& strFormat) {
    pendingAdmin_.format = text::TrimSpaces(strFormat);
    if (SendAdmin(HexToBytes("00070004000000000004") + MakeTLV("0001", 2, pendingAdmin_.format))) {
        pendingAdmin_.format.clear();
    }
}

void TolSock::ChangePassword(const std::string& strNewPassword) {
    pendingAdmin_.newPassword = text::TrimSpaces(strNewPassword);
    if (SendAdmin(HexToBytes("00070004000000000004") +
                  MakeTLV("0002", 2, pendingAdmin_.newPassword) + MakeTLV("0012", 2, password_))) {
        pendingAdmin_.newPassword.clear();
    }
}

void TolSock::ChangeEmail(const std::string& strNewEmail) {
    pendingAdmin_.email = text::TrimSpaces(strNewEmail);
    if (SendAdmin(HexToBytes("00070004000000000004") + MakeTLV("0011", 2, pendingAdmin_.email))) {
        pendingAdmin_.email.clear();
    }
}

void TolSock::NewRegStatus(int intNewRegType) {
    pendingAdmin_.regType = intNewRegType;
    const auto type = Word16(intNewRegType);
    if (!type) return;
    if (SendAdmin(HexToBytes("00070004000000000004") + MakeTLV("0013", 2, *type))) {
        pendingAdmin_.regType = 0;
    }
}

void TolSock::RequestNick() {
    pendingAdmin_.nick = true;
    if (SendAdmin(HexToBytes("00070002000000000004") + MakeTLV("0001", 2, ""))) {
        pendingAdmin_.nick = false;
    }
}

void TolSock::RequestEmail() {
    pendingAdmin_.emailRequested = true;
    if (SendAdmin(HexToBytes("00070002000000000004") + MakeTLV("0011", 2, ""))) {
        pendingAdmin_.emailRequested = false;
    }
}

void TolSock::RequestRegistrationStatus() {
    pendingAdmin_.registration = true;
    if (SendAdmin(HexToBytes("00070002000000000004") + MakeTLV("0013", 2, ""))) {
        pendingAdmin_.registration = false;
    }
}

void TolSock::GetBuddyIcon(const std::string& strBuddy, const std::string& strMD5Hash) {
    // The request waits for the icon connection when there is none yet.
    pendingIconBuddy_ = strBuddy;
    pendingIconHash_ = strMD5Hash;
    if (intIconIndex_ == 0) {
        SendServiceRequest("0010");
        return;
    }
    SendPendingIconRequest();
}

void TolSock::SendPendingIconRequest() {
    if (intIconIndex_ == 0 || pendingIconBuddy_.empty()) return;
    const auto buddy = LengthPrefixed(pendingIconBuddy_);
    const auto hash = LengthPrefixed(pendingIconHash_);
    pendingIconBuddy_.clear();
    pendingIconHash_.clear();
    if (!buddy || !hash) return;
    // Buddy icon request: the name, one icon (id 1, flags 1) and its hash.
    SendPacket(intIconIndex_, 2,
               HexToBytes("00100004000000000004") + *buddy + HexToBytes("01000101") + *hash);
}

}  // namespace oscar
