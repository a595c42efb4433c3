// Records the client's events as readable lines, in the order raised.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "oscar/client_events.h"

namespace testing_support {

// The events of a whole sign-on, in order, closed by `loggedIn`.
inline std::vector<std::string> SignOnEvents(const std::string& loggedIn) {
    return {"LoginStatus(Connecting to Auth server...)",
            "LoginStatus(Sending Ack to Auth Server...)",
            "LoginStatus(Requesting Auth Key...)",
            "LoginStatus(Sending Login Information...)",
            "LoginStatus(Connecting to BOS Server...)",
            "LoginStatus(Sending Ack and Cookie to BOS Server...)",
            "LoginStatus(Requesting Supported Services Versions...)",
            "LoginStatus(Requesting Rate Limit Information...)",
            "LoginStatus(Sending Service Requests...)",
            "LoginStatus(Login Completed!)",
            loggedIn};
}

class RecordingEvents : public oscar::ClientEvents {
  public:
    using S = const std::string&;
    void LoggedIn(S u, S e, S h) override { Rec("LoggedIn", u, e, h); }
    void LoginStatus(S s) override { Rec("LoginStatus", s); }
    void LoginError(S d, int c) override { Rec("LoginError", d, c); }
    void LoggedOff() override { Rec("LoggedOff"); }
    void Error(S d, int c, int s, S f) override { Rec("Error", d, c, s, f); }
    void ConnectionLost(int i, S d) override { Rec("ConnectionLost", i, d); }
    void JoinedChat(S n, int e, int i, int c, int p, int m) override {
        Rec("JoinedChat", n, e, i, c, p, m);
    }
    void LeftChat(S n, int e, int i, int c) override { Rec("LeftChat", n, e, i, c); }
    void UserJoinedChat(int c, S n) override { Rec("UserJoinedChat", c, n); }
    void UserLeftChat(int c, S n) override { Rec("UserLeftChat", c, n); }
    void ChatMessage(int c, S n, S m) override { Rec("ChatMessage", c, n, m); }
    void InstantMessage(S n, S m, int c) override { Rec("InstantMessage", n, m, c); }
    void IncomingUserInfo(S n, int w, std::int32_t idle, std::int32_t online, S cls, S enc,
                          S profile) override {
        Rec("IncomingUserInfo", n, w, idle, online, cls, enc, profile);
    }
    void EmailLookupResults(const std::vector<std::string>& names) override {
        std::string joined;
        for (const auto& n : names)
            joined += (joined.empty() ? "" : ", ") + n;
        Rec("EmailLookupResults", joined);
    }
    void IncomingBuddyIcon(S b, std::string data) override { Rec("IncomingBuddyIcon", b, data); }
    void ScreennameFormatted(bool s, int p) override { Rec("ScreennameFormatted", s, p); }
    void EmailUpdated(bool s, int p) override { Rec("EmailUpdated", s, p); }
    void RegistrationStatusUpdated(bool s, int p) override {
        Rec("RegistrationStatusUpdated", s, p);
    }
    void PasswordUpdated(bool s, int p) override { Rec("PasswordUpdated", s, p); }
    void FormattedScreennameResults(S f, int p) override {
        Rec("FormattedScreennameResults", f, p);
    }
    void EmailResults(S e, int p) override { Rec("EmailResults", e, p); }
    void RegistrationResults(int r, int p) override { Rec("RegistrationResults", r, p); }

    std::vector<std::string> Take() { return std::exchange(log, {}); }

    std::vector<std::string> log;
    // Runs after each event is logged: lets a test act from inside a handler.
    std::function<void(const std::string&)> onEvent;

  private:
    static std::string Text(S s) { return s; }
    static std::string Text(bool b) { return b ? "true" : "false"; }
    static std::string Text(int n) { return std::to_string(n); }
    // "Name(a, b, c)", in the order the event gives them.
    template <typename... Args>
    void Rec(const char* name, const Args&... args) {
        std::string line;
        for (const std::string& part : std::initializer_list<std::string>{Text(args)...})
            line += ", " + part;
        line = std::string(name) + "(" + line.substr(line.empty() ? 0 : 2) + ")";
        log.push_back(line);
        if (onEvent) onEvent(line);
    }
};

}  // namespace testing_support
