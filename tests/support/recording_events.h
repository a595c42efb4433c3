// Records the client's events as readable lines, in the order raised.
#pragma once

#include <functional>
#include <string>
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
    void LoggedIn(const std::string& u, const std::string& e, const std::string& h) override {
        Log("LoggedIn(" + u + ", " + e + ", " + h + ")");
    }
    void LoginStatus(const std::string& s) override { Log("LoginStatus(" + s + ")"); }
    void LoginError(const std::string& d, int c) override {
        Log("LoginError(" + d + ", " + std::to_string(c) + ")");
    }
    void LoggedOff() override { Log("LoggedOff()"); }
    void Error(const std::string& d, int c, int s, const std::string& f) override {
        Log("Error(" + d + ", " + std::to_string(c) + ", " + std::to_string(s) + ", " + f + ")");
    }
    void ConnectionLost(int i, const std::string& d) override {
        Log("ConnectionLost(" + std::to_string(i) + ", " + d + ")");
    }
    void JoinedChat(const std::string& n, int e, int i, int c, int p, int m) override {
        Log("JoinedChat(" + n + ", " + std::to_string(e) + ", " + std::to_string(i) + ", " +
            std::to_string(c) + ", " + std::to_string(p) + ", " + std::to_string(m) + ")");
    }
    void LeftChat(const std::string& n, int e, int i, int c) override {
        Log("LeftChat(" + n + ", " + std::to_string(e) + ", " + std::to_string(i) + ", " +
            std::to_string(c) + ")");
    }
    void UserJoinedChat(int c, const std::string& n) override {
        Log("UserJoinedChat(" + std::to_string(c) + ", " + n + ")");
    }
    void UserLeftChat(int c, const std::string& n) override {
        Log("UserLeftChat(" + std::to_string(c) + ", " + n + ")");
    }
    void ChatMessage(int c, const std::string& n, const std::string& m) override {
        Log("ChatMessage(" + std::to_string(c) + ", " + n + ", " + m + ")");
    }
    void InstantMessage(const std::string& n, const std::string& m, int c) override {
        Log("InstantMessage(" + n + ", " + m + ", " + std::to_string(c) + ")");
    }
    void IncomingUserInfo(const std::string& n, int w, std::int32_t idle, std::int32_t online,
                          const std::string& cls, const std::string& enc,
                          const std::string& profile) override {
        Log("IncomingUserInfo(" + n + ", " + std::to_string(w) + ", " + std::to_string(idle) +
            ", " + std::to_string(online) + ", " + cls + ", " + enc + ", " + profile + ")");
    }
    void EmailLookupResults(const std::vector<std::string>& names) override {
        std::string joined;
        for (const auto& n : names)
            joined += (joined.empty() ? "" : ", ") + n;
        Log("EmailLookupResults(" + joined + ")");
    }
    void IncomingBuddyIcon(const std::string& b, std::string data) override {
        Log("IncomingBuddyIcon(" + b + ", " + data + ")");
    }
    void ScreennameFormatted(bool s, int p) override { Flag("ScreennameFormatted", s, p); }
    void EmailUpdated(bool s, int p) override { Flag("EmailUpdated", s, p); }
    void RegistrationStatusUpdated(bool s, int p) override {
        Flag("RegistrationStatusUpdated", s, p);
    }
    void PasswordUpdated(bool s, int p) override { Flag("PasswordUpdated", s, p); }
    void FormattedScreennameResults(const std::string& f, int p) override {
        Log("FormattedScreennameResults(" + f + ", " + std::to_string(p) + ")");
    }
    void EmailResults(const std::string& e, int p) override {
        Log("EmailResults(" + e + ", " + std::to_string(p) + ")");
    }
    void RegistrationResults(int r, int p) override {
        Log("RegistrationResults(" + std::to_string(r) + ", " + std::to_string(p) + ")");
    }

    std::vector<std::string> Take() {
        std::vector<std::string> taken;
        taken.swap(log);
        return taken;
    }

    std::vector<std::string> log;
    // Runs after each event is logged: lets a test act from inside a handler.
    std::function<void(const std::string&)> onEvent;

  private:
    void Log(const std::string& line) {
        log.push_back(line);
        if (onEvent) onEvent(line);
    }
    void Flag(const char* name, bool success, int permission) {
        Log(std::string(name) + "(" + (success ? "true" : "false") + ", " +
            std::to_string(permission) + ")");
    }
};

}  // namespace testing_support
