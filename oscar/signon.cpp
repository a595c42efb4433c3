// The dispatch of incoming frames and the sign-on on index 0: the
// authorization exchange, the BOS setup ending in LoggedIn, and the BOS
// housekeeping (pause, resume, migration, sign-off frame).
#include "oscar/frame_reading.h"
#include "oscar/login_request.h"
#include "oscar/tolsock.h"
#include "text/text.h"
#include "text/text_number.h"

namespace oscar {

namespace {

constexpr const char* kProfile =
    "<body bgcolor=\"black\"><font color=\"white\"><b>TolSock 0.3 Alpha<br><br>";

std::string AuthorizationErrorText(int code) {
    switch (code) {
        case 0x01:
            return "Unregistered screenname.";
        case 0x04:
            return "Invalid screenname.";
        case 0x05:
            return "The password you entered is not valid.";
        case 0x08:
            return "Account deleted.";
        case 0x11:
            return "Sign on blocked.";
        case 0x18:
            return "Rate limit exceeded. Please try again later";
        case 0x1D:
            return "You are attempting to sign on again too soon.";
        case 0x2A:
            return "Unknown login error.";
        default:
            return "Unknown Error.";
    }
}

std::string GenericErrorText(int subcode) {
    switch (subcode) {
        case 0x4A:
            return "Join chat failed, ejected.";
        case 0x18:
            return "Join chat failed, full.";
        case 0x2E:
            return "Join chat failed, you are already in this chat.";
        case 0x32:
            return "Join chat failed, objectional chat name.";
        default:
            return "Unknown Error.";
    }
}

// "host:port" split at the first colon; `fallbackPort` when there is none.
void SplitAddress(const std::string& address, std::string& host, long long& port,
                  long long fallbackPort) {
    const auto colon = address.find(':');
    host = address.substr(0, colon);
    port =
        colon == std::string::npos ? fallbackPort : text::LeadingNumber(address.substr(colon + 1));
}

}  // namespace

void TolSock::ParsePacket(int Index, const std::string& strPacket) {
    if (!ValidIndex(Index)) return;
    if (Index == 0) {
        ParseBosFrame(strPacket);
    } else {
        ParseServiceFrame(Index, strPacket);
    }
}

void TolSock::ParseBosFrame(const std::string& frame) {
    const auto channel = ByteAt(frame, 2);
    // Any frame is an answer: the step's deadline starts again.
    if (signOnSecondsLeft_ > 0) signOnSecondsLeft_ = kStepSeconds;
    if (channel == 1) {
        if (blnAuthorizing_) {
            AuthorizationGreeting();
        } else {
            BosGreeting();
        }
    }
    // The authorization server's closing frame means nothing; on BOS the
    // frame ends the session. While paused for a move it is left to the
    // close that follows.
    if (channel == 4 && !blnAuthorizing_ && !blnPaused_) {
        SignOffFrame(frame);
        return;
    }

    const std::string key = SnacKey(Piece(frame, 7, 4));
    if (key == "00170007") {
        KeyReply(frame);
    } else if (key == "00170003") {
        AuthorizationReply(frame);
    } else if (key == "00010003") {
        SignOnStatus("Requesting Supported Services Versions...");
        SendPacket(0, 2, HexToBytes("00010017000000000001") + FixedFamilyVersions());
    } else if (key == "00010018") {
        SignOnStatus("Requesting Rate Limit Information...");
        SendPacket(0, 2, HexToBytes("00010006000000000001"));
    } else if (key == "00010007") {
        ReadRates(0, frame);
        RateInformation();
    } else if (key == "0001000A") {
        RateChange(0, frame);
    } else if (key == "00040005") {
        strICBMParams_ = std::string(Piece(frame, 17, 16));
    } else if (key == "00090003") {
        BosRights();
    } else if (key == "00010005") {
        ServiceRedirect(frame);
    } else if (key == "00010001") {
        GenericError(frame);
    } else if (key == "0001000B") {
        blnPaused_ = true;
        SendPacket(0, 2,
                   HexToBytes("0001000C00000000000C00010013000200030004000600080009000A000B"));
    } else if (key == "0001000D") {
        blnPaused_ = false;
    } else if (key == "00010012") {
        Migration(frame);
    } else if (key == "00020006") {
        UserInformation(frame);
    } else if (key == "00040001") {
        IcbmError(frame);
    } else if (key == "00040007") {
        IncomingIM(frame);
    } else if (key == "000A0001") {
        EmailLookupError(frame);
    } else if (key == "000A0003") {
        EmailLookupReply(frame);
    }
}

void TolSock::SignOnStatus(const std::string& text) {
    signOnStep_ = text;
    if (!signOnServer_.empty()) signOnSecondsLeft_ = kStepSeconds;
    events_->LoginStatus(text);
}

void TolSock::SignOffFrame(const std::string& frame) {
    std::string payload(From(frame, 7));
    TLVList tlvs;
    ParseTLVs(payload, tlvs);
    SessionEnd end;
    for (std::size_t i = 0; i + 1 < tlvs.size(); i += 2) {
        const std::string type = BytesToHex(tlvs[i]);
        if (type == "0009") {
            // One byte on some servers, two on others.
            end.code = 0;
            for (const char byte : tlvs[i + 1].substr(0, 2))
                end.code = end.code << 8 | static_cast<unsigned char>(byte);
        } else if (type == "000B") {
            end.url = tlvs[i + 1];
        }
    }
    const std::string reason = end.code == 1   ? "this screen name signed on elsewhere"
                               : end.code != 0 ? "error code " + std::to_string(end.code)
                                               : "the server is stopping or restarting";
    if (!blnLoggedIn_ || migrating_) {
        FailSignOn("the " + signOnServer_ + " signed the bot off, " + reason);
        return;
    }
    end.cause = end.code == 1 ? SessionEndCause::SignedOnElsewhere : SessionEndCause::ServerSignOff;
    end.description = "Signed off by the server: " + reason +
                      (end.url.empty() ? std::string() : " (" + end.url + ")") + ".";
    EndSession(end);
}

void TolSock::AuthorizationGreeting() {
    SignOnStatus("Sending Ack to Auth Server...");
    SendPacket(0, 1, HexToBytes("00000001"));
    SignOnStatus("Requesting Auth Key...");
    if (const auto length = MakeWord(static_cast<long long>(screenName_.size()))) {
        SendPacket(0, 2, HexToBytes("001700060000000000010001") + *length + screenName_);
    }
}

void TolSock::KeyReply(const std::string& frame) {
    const std::size_t keyLength = ByteAt(frame, 18).value_or(0);
    const std::string key(Piece(frame, 19, keyLength));
    const std::string request = BuildLoginRequest(screenName_, password_, key);
    SignOnStatus("Sending Login Information...");
    if (!request.empty()) SendPacket(0, 2, request);
}

void TolSock::AuthorizationReply(const std::string& frame) {
    std::string data = SnacData(frame);
    TLVList tlvs;
    ParseTLVs(data, tlvs);
    for (std::size_t i = 0; i + 1 < tlvs.size(); i += 2) {
        const std::string type = BytesToHex(tlvs[i]);
        const std::string& value = tlvs[i + 1];
        if (type == "0001") {
            screenName_ = value;
        } else if (type == "0008") {
            const int code = value.size() >= 2 ? static_cast<unsigned char>(value[1]) : 0;
            events_->LoginError(AuthorizationErrorText(code), code);
            ResetAll();
            return;
        } else if (type == "0005") {
            // Without a port the previous host and port stay.
            if (value.find(':') != std::string::npos) SplitAddress(value, bosHost_, bosPort_, 0);
        } else if (type == "0006") {
            bosCookie_ = value;
        } else if (type == "0011") {
            strAccountEmail_ = value;
        }
    }
    blnAuthorizing_ = false;
    Disconnect(0);
    if (bosHost_.empty() || bosPort_ < 1 || bosPort_ > 65535) {
        FailSignOn("the " + signOnServer_ + " named no BOS server with a port from 1 to 65535");
        return;
    }
    signOnServer_ = "BOS server " + bosHost_ + ":" + std::to_string(bosPort_);
    sockets_.SetTag(0, "[BOS]connecting");
    SignOnStatus("Connecting to BOS Server...");
    sockets_.Connect(0, bosHost_, static_cast<int>(bosPort_));
}

void TolSock::BosGreeting() {
    if (!blnLoggedIn_) SignOnStatus("Sending Ack and Cookie to BOS Server...");
    SendPacket(0, 1, HexToBytes("00000001") + MakeTLV("0006", 2, bosCookie_));
}

void TolSock::RateInformation() {
    SignOnStatus("Sending Service Requests...");
    for (const char* snac : {
             "0001000800000000000800010002000300040005",  // rate acknowledgement
             "0001000E00000000000E",                      // own user information
             "00130002000000000002",                      // stored-list rights
             "001300050000000000054551B1B000BB",          // stored-list check
             "000200020000000000FE",                      // location rights
             "000300020000000000FF",                      // buddy-list rights
             "00040004000000000004",                      // ICBM parameters
             "00090002000000000009",                      // BOS rights
         }) {
        SendPacket(0, 2, HexToBytes(snac));
    }
}

void TolSock::BosRights() {
    SignOnStatus("Login Completed!");
    SendPacket(0, 2, HexToBytes("00130007000000000007"));
    SendPacket(0, 2,
               HexToBytes("00020004000000000004") +
                   MakeTLV("0005", 2, BuildCapabilities(0, {}, capabilities_)) +
                   MakeTLV("0002", 2, kProfile) + MakeTLV("0006", 2, HexToBytes("000400020002")));
    SendPacket(0, 2, HexToBytes("00040002000000000002") + strICBMParams_);
    SendPacket(0, 2, HexToBytes("00010002000000000001") + FixedClientReady());
    // Signed on (or moved): nothing is waited on any more.
    migrating_ = false;
    signOnServer_.clear();
    signOnSecondsLeft_ = 0;
    if (blnLoggedIn_) {
        blnPaused_ = false;
    } else {
        blnLoggedIn_ = true;
        const std::string user = screenName_, email = strAccountEmail_, host = bosHost_;
        events_->LoggedIn(user, email, host);
    }
    bosHost_.clear();
    bosPort_ = 0;
    bosCookie_.clear();
    authHost_.clear();
    authPort_ = 0;
}

void TolSock::Migration(const std::string& frame) {
    std::string data(From(frame, HasOptionalBlock(frame) ? 25 : 17));
    if (data.starts_with(std::string_view("\0\0", 2))) data.erase(0, 2);
    TLVList tlvs;
    ParseTLVs(data, tlvs);
    for (std::size_t i = 0; i + 1 < tlvs.size(); i += 2) {
        const std::string type = BytesToHex(tlvs[i]);
        if (type == "0005") {
            SplitAddress(tlvs[i + 1], bosHost_, bosPort_, 5190);
        } else if (type == "0006") {
            bosCookie_ = tlvs[i + 1];
        }
    }
    Disconnect(0);
    migrating_ = true;
    if (bosHost_.empty() || bosPort_ < 1 || bosPort_ > 65535) {
        FailSignOn("the notice named no BOS server with a port from 1 to 65535");
        return;
    }
    signOnServer_ = "BOS server " + bosHost_ + ":" + std::to_string(bosPort_);
    signOnSecondsLeft_ = kStepSeconds;
    sockets_.Connect(0, bosHost_, static_cast<int>(bosPort_));
}

void TolSock::ServiceRedirect(const std::string& frame) {
    std::string data(From(frame, HasOptionalBlock(frame) ? 19 : 17));
    TLVList tlvs;
    ParseTLVs(data, tlvs);
    OpenServiceConnection(tlvs);
}

void TolSock::GenericError(const std::string& frame) {
    std::string data = SnacData(frame);
    if (HasOptionalBlock(frame)) {
        const std::size_t skip = ByteAt(data, 2).value_or(0);
        data = std::string(From(data, 3 + skip));
    }
    const std::string code = BytesToHex(Piece(data, 1, 2));
    std::string rest(From(data, 3));
    TLVList tlvs;
    ParseTLVs(rest, tlvs);
    const bool hasSubcode = tlvs.size() >= 2 && BytesToHex(tlvs[0]) == "0008";
    const auto subcode = hasSubcode ? ReadWord(tlvs[1]) : std::nullopt;
    if (join_.active) {
        // The answer to the join's service request: the join is over.
        if (subcode) {
            FailJoin(GenericErrorText(*subcode), *subcode, code, false);
        } else {
            FailJoin("Join chat failed, the BOS server refused the service.",
                     ReadWord(Piece(data, 1, 2)).value_or(0), code, false);
        }
        return;
    }
    if (subcode) events_->Error(GenericErrorText(*subcode), *subcode, 0, code);
}

}  // namespace oscar
