// The client's connections: frames out and in, closing, losing and
// resetting connections, and opening a service connection from a redirect.
#include <algorithm>

#include "oscar/tolsock.h"
#include "text/text.h"
#include "text/text_number.h"

namespace oscar {

namespace {

std::string ServiceName(const std::string& family) {
    if (family == "000D") return "chat navigation";
    if (family == "000E") return "chat";
    if (family == "0007") return "admin";
    if (family == "0010") return "buddy icon";
    if (family == "0018") return "e-mail lookup";
    return "family " + family;
}

}  // namespace

TolSock::TolSock(SocketLayer& sockets) : sockets_(sockets) {
    sockets_.SetListener(this);
    sockets_.Create(0);
}

TolSock::~TolSock() {
    sockets_.SetListener(nullptr);
    if (clock_) clock_->CancelWake();
}

void TolSock::OnDataArrival(int index) {
    const std::string bytes = sockets_.ReadAll(index);
    if (!ValidIndex(index)) return;
    Connection& c = Conn(index);
    c.cutter.Append(bytes);
    // A handler may run a nested event loop (a message box); bytes that arrive
    // meanwhile on this index are queued and handed out by the outer call.
    if (c.cutting) return;
    c.cutting = true;
    // Closing the connection empties the cutter, so a frame handler that
    // closes or reconnects this index ends the stale frames of this read.
    while (auto frame = c.cutter.Next())
        ParsePacket(index, *frame);
    c.cutting = false;
}

int TolSock::HighestIndex() const {
    for (int i = kMaxIndex; i > 0; --i) {
        if (sockets_.Exists(i)) return i;
    }
    return 0;
}

void TolSock::Disconnect(int index) {
    sockets_.Close(index);
    DropQueue(index);
    Connection& c = Conn(index);
    c.cutter.Clear();
    c.cookie.clear();
    c.family.clear();
    c.families.clear();
    c.address.clear();
}

void TolSock::CloseSock(int Index) {
    if (!ValidIndex(Index) || !sockets_.Exists(Index)) return;
    if (Index != 0 && Index == HighestIndex()) {
        Disconnect(Index);
        sockets_.Destroy(Index);
        return;
    }
    sockets_.SetTag(Index, "");
    Disconnect(Index);
}

void TolSock::OnSocketError(int index) {
    if (!ValidIndex(index)) return;
    LoseConnection(index, sockets_.ErrorText(index));
}

void TolSock::LoseConnection(int index, const std::string& why) {
    const std::string because = why.empty() ? std::string() : " (" + why + ")";
    if (index == 0 && !(blnLoggedIn_ && !migrating_) && !signOnServer_.empty()) {
        FailSignOn("the connection to the " + signOnServer_ + " failed" + because);
        return;
    }
    if (join_.active && index != 0 && (index == join_.navIndex || index == join_.chatIndex)) {
        FailJoin(
            "Join chat failed, the connection to the " + ServerOf(index) + " ended" + because + ".",
            0, Conn(index).family, true);
        return;
    }
    auto lost = [this, index](const std::string& text) { events_->ConnectionLost(index, text); };
    if (intAdminIndex_ != 0 && index == intAdminIndex_) {
        lost("Connection to the admin server has been lost.");
        intAdminIndex_ = 0;
    } else if (index == 0) {
        SessionEnd end;
        end.cause = SessionEndCause::ConnectionLost;
        end.description = "Connection to the main BOS server has been lost.";
        EndSession(end);
        return;
    } else if (intEmailIndex_ != 0 && index == intEmailIndex_) {
        lost("Connection to the email server has been lost.");
        intEmailIndex_ = 0;
    } else if (intChatNavIndex_ != 0 && index == intChatNavIndex_) {
        lost("Connection to the chat navigation server has been lost.");
        intChatNavIndex_ = 0;
    } else if (intIconIndex_ != 0 && index == intIconIndex_) {
        lost("Connection to the buddy icon server has been lost.");
        intIconIndex_ = 0;
    } else if (const auto left = TakeRoom(index)) {
        // Taken off the list first, so that the handlers of the events below
        // already see the room gone.
        events_->LeftChat(left->ChatName, left->Exchange, left->Instance, left->ChatIndex);
        CloseSock(index);
        lost("Connection to chat Name: " + left->ChatName +
             ", Exchange: " + std::to_string(left->Exchange) +
             ", Instance: " + std::to_string(left->Instance) + " has been lost.");
        return;
    } else {
        lost("Connection to sock index " + std::to_string(index) + " has been lost.");
    }
    CloseSock(index);
}

void TolSock::EndSession(SessionEnd end) {
    lastEnd_ = std::move(end);
    // The rooms are left visibly, then nothing of the session is kept: no
    // role, room or sign-on state survives to refuse the next sign-on.
    while (!chat_.empty()) {
        const Chats left = chat_.front();
        chat_.erase(chat_.begin());
        events_->LeftChat(left.ChatName, left.Exchange, left.Instance, left.ChatIndex);
    }
    ResetAll();
    const std::string description = lastEnd_.description;
    events_->ConnectionLost(0, description);
}

void TolSock::FailSignOn(const std::string& why) {
    SessionEnd end;
    end.cause = migrating_ ? SessionEndCause::MigrationFailed : SessionEndCause::SignOnFailed;
    end.description = migrating_ ? "Moving to another BOS server failed: " + why + "."
                                 : "Sign-on failed at \"" + signOnStep_ + "\": " + why + ".";
    EndSession(end);
}

void TolSock::TickSecond() {
    if (signOnSecondsLeft_ > 0 && --signOnSecondsLeft_ == 0) {
        FailSignOn("no answer from the " + signOnServer_ + " within " +
                   std::to_string(kStepSeconds) + " seconds");
        return;
    }
    if (join_.active && --join_.secondsLeft <= 0) {
        FailJoin("Join chat failed, no answer within " + std::to_string(kStepSeconds) +
                     " seconds while " + join_.step + ".",
                 0, "", true);
    }
}

void TolSock::JoinStep(std::string step) {
    join_.step = std::move(step);
    join_.secondsLeft = kStepSeconds;
}

// `family` is a copy: it may name a connection that is closed below.
void TolSock::FailJoin(const std::string& text, int code, std::string family, bool dropNav) {
    const PendingJoin join = join_;
    join_ = PendingJoin{};
    blnCreatePending_ = false;
    // A half-made room goes without a word; the navigation connection goes
    // too when it failed or stayed silent, so that the next join opens a new one.
    if (join.chatIndex != 0) {
        TakeRoom(join.chatIndex);
        CloseSock(join.chatIndex);
    }
    if (dropNav && join.navIndex != 0) {
        if (intChatNavIndex_ == join.navIndex) intChatNavIndex_ = 0;
        CloseSock(join.navIndex);
    }
    events_->Error(text, code, 0, family);
}

std::string TolSock::ServerOf(int index) const {
    const std::string& address = connections_[static_cast<std::size_t>(index)].address;
    const std::string where = address.empty() ? std::string() : " " + address;
    if (index != 0 && index == join_.chatIndex) return "chat server" + where;
    if (index != 0 && index == join_.navIndex) return "chat navigation server" + where;
    return "server" + where;
}

std::optional<Chats> TolSock::TakeRoom(int index) {
    auto room = std::find_if(chat_.begin(), chat_.end(),
                             [index](const Chats& c) { return c.ChatIndex == index; });
    if (room == chat_.end()) return std::nullopt;
    Chats taken = std::move(*room);
    chat_.erase(room);
    return taken;
}

void TolSock::RemoveRoomsAndRaiseLeft(int index) {
    while (const auto left = TakeRoom(index)) {
        events_->LeftChat(left->ChatName, left->Exchange, left->Instance, left->ChatIndex);
    }
}

void TolSock::DropConnection(int Index) {
    if (!ValidIndex(Index)) return;
    if (const auto left = TakeRoom(Index)) {
        events_->LeftChat(left->ChatName, left->Exchange, left->Instance, left->ChatIndex);
    } else if (Index == intAdminIndex_) {
        intAdminIndex_ = 0;
    } else if (Index == 0) {
        // The BOS connection: no field to clear.
    } else if (Index == intEmailIndex_) {
        intEmailIndex_ = 0;
    } else if (Index == intChatNavIndex_) {
        intChatNavIndex_ = 0;
    } else if (Index == intIconIndex_) {
        intIconIndex_ = 0;
    }
    CloseSock(Index);
}

void TolSock::ResetSockets() {
    const int highest = HighestIndex();
    for (int i = 0; i <= highest; ++i) {
        if (!sockets_.Exists(i)) continue;
        Disconnect(i);
        if (i != 0) sockets_.Destroy(i);
    }
    chat_.clear();
    intChatNavIndex_ = intAdminIndex_ = intIconIndex_ = intEmailIndex_ = 0;
    join_ = PendingJoin{};
}

void TolSock::ResetAll() {
    ResetSockets();
    ClearLoginInfo();
    bosHost_.clear();
    bosPort_ = 0;
    bosCookie_.clear();
    authHost_.clear();
    authPort_ = 0;
    ClearPendingChat();
    ClearPendingAdmin();
    pendingIconBuddy_.clear();
    pendingIconHash_.clear();
}

void TolSock::ClearLoginInfo() {
    screenName_.clear();
    password_.clear();
    strAccountEmail_.clear();
    blnAuthorizing_ = false;
    blnLoggedIn_ = false;
    blnPaused_ = false;
    migrating_ = false;
    signOnServer_.clear();
    signOnStep_.clear();
    signOnSecondsLeft_ = 0;
}

void TolSock::ClearPendingChat() {
    strPendingChatName_.clear();
    intPendingExchange_ = 0;
    intPendingInstance_ = 0;
    blnCreatePending_ = false;
}

void TolSock::SendPendingAdmin() {
    if (intAdminIndex_ == 0) {
        ClearPendingAdmin();
        return;
    }
    const std::string change = HexToBytes("00070004000000000004");
    const std::string query = HexToBytes("00070002000000000002");
    PendingAdmin& q = pendingAdmin_;
    if (!q.email.empty()) {
        SendPacket(intAdminIndex_, 2, change + MakeTLV("0011", 2, q.email));
        q.email.clear();
    }
    if (!q.format.empty()) {
        SendPacket(intAdminIndex_, 2, change + MakeTLV("0001", 2, q.format));
        q.format.clear();
    }
    if (!q.newPassword.empty()) {
        SendPacket(intAdminIndex_, 2,
                   change + MakeTLV("0012", 2, password_) + MakeTLV("0002", 2, q.newPassword));
        q.newPassword.clear();
    }
    if (q.regType != 0) {
        if (auto type = MakeWord(q.regType)) {
            SendPacket(intAdminIndex_, 2, change + MakeTLV("0013", 2, *type));
        }
        q.regType = 0;
    }
    if (q.emailRequested) {
        SendPacket(intAdminIndex_, 2, query + MakeTLV("0011", 2, ""));
        q.emailRequested = false;
    }
    if (q.nick) {
        SendPacket(intAdminIndex_, 2, query + MakeTLV("0001", 2, ""));
        q.nick = false;
    }
    if (q.registration) {
        SendPacket(intAdminIndex_, 2, query + MakeTLV("0013", 2, ""));
        q.registration = false;
    }
}

void TolSock::OpenServiceConnection(const TLVList& tlvs) {
    std::string family, host, cookie, address;
    long long port = 0;
    for (std::size_t i = 0; i + 1 < tlvs.size(); i += 2) {
        const std::string type = BytesToHex(tlvs[i]);
        const std::string& value = tlvs[i + 1];
        if (type == "000D") {
            family = value;
        } else if (type == "0005") {
            const auto colon = value.find(':');
            address = value;
            host = value.substr(0, colon);
            port = colon == std::string::npos ? 5190 : text::LeadingNumber(value.substr(colon + 1));
        } else if (type == "0006") {
            cookie = value;
        }
    }
    // A port that does not fit would silently become another port.
    if (host.empty() || port < 1 || port > 65535) {
        const std::string text = "the BOS server named \"" + address + "\" for the " +
                                 ServiceName(BytesToHex(family)) +
                                 " service, which has no port from 1 to 65535";
        if (join_.active) {
            FailJoin("Join chat failed, " + text + ".", 0, BytesToHex(family), false);
        } else {
            events_->Error("Service refused: " + text + ".", 0, 0, BytesToHex(family));
        }
        return;
    }

    // The highest element that is neither connected nor still connecting is
    // reused; otherwise a new element goes one above the highest. A socket
    // still being opened is left alone, so two redirects in a row get two
    // connections.
    int chosen = 0;
    const int highest = HighestIndex();
    for (int i = 0; i <= highest; ++i) {
        if (!sockets_.Exists(i) || sockets_.IsConnected(i)) continue;
        if (sockets_.Tag(i).ends_with("connecting")) continue;
        chosen = i;
    }
    if (chosen == 0) {
        chosen = highest + 1;
        // Every index is taken: the redirect is dropped.
        if (chosen > kMaxIndex) return;
        sockets_.Create(chosen);
    }
    Disconnect(chosen);

    Connection& c = Conn(chosen);
    if (!family.empty()) {
        sockets_.SetTag(chosen, FamilyName(family) + "connecting");
        c.family = BytesToHex(family);
    }
    c.cookie = cookie;
    c.address = host + ":" + std::to_string(port);
    // The join knows its connections before they can fail.
    if (join_.active && (c.family == "000D" || c.family == "000E")) {
        (c.family == "000D" ? join_.navIndex : join_.chatIndex) = chosen;
        JoinStep("connecting to the " + ServerOf(chosen));
    }
    sockets_.Connect(chosen, host, static_cast<int>(port));
}

}  // namespace oscar
