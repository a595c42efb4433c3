// The 22 events through which the client reports what happens on the
// network, in their fixed order. The window overrides what it handles; the
// rest do nothing. Events are raised synchronously from inside the client.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace oscar {

class ClientEvents {
  public:
    virtual ~ClientEvents() = default;

    virtual void LoggedIn(const std::string& /*strUser*/, const std::string& /*strEmail*/,
                          const std::string& /*strServerIP*/) {}
    virtual void LoginStatus(const std::string& /*strCurrentAction*/) {}
    virtual void LoginError(const std::string& /*strDescription*/, int /*intErrorCode*/) {}
    virtual void LoggedOff() {}
    virtual void Error(const std::string& /*strDescription*/, int /*intErrorCode*/,
                       int /*intSubErrorCode*/, const std::string& /*strFamilyDenied*/) {}
    virtual void ConnectionLost(int /*intSockIndex*/, const std::string& /*strDescription*/) {}
    virtual void JoinedChat(const std::string& /*strChatName*/, int /*intExchange*/,
                            int /*intInstance*/, int /*intChatIndex*/, int /*intMaxPeople*/,
                            int /*intMaxMessageLength*/) {}
    virtual void LeftChat(const std::string& /*strChatName*/, int /*intExchange*/,
                          int /*intInstance*/, int /*intChatIndex*/) {}
    virtual void UserJoinedChat(int /*intChatIndex*/, const std::string& /*strScreenname*/) {}
    virtual void UserLeftChat(int /*intChatIndex*/, const std::string& /*strScreenname*/) {}
    virtual void ChatMessage(int /*intChatIndex*/, const std::string& /*strScreenname*/,
                             const std::string& /*strMessage*/) {}
    virtual void InstantMessage(const std::string& /*strScreenname*/,
                                const std::string& /*strMessage*/, int /*intChannel*/) {}
    virtual void IncomingUserInfo(const std::string& /*strScreenname*/, int /*intWarningLevel*/,
                                  std::int32_t /*IdleTimeSeconds*/,
                                  std::int32_t /*OnlineTimeSeconds*/,
                                  const std::string& /*strUserClass*/,
                                  const std::string& /*strEncodingType*/,
                                  const std::string& /*strProfile*/) {}
    virtual void EmailLookupResults(const std::vector<std::string>& /*Screennames*/) {}
    virtual void IncomingBuddyIcon(const std::string& /*strBuddy*/, std::string /*strIconData*/) {}
    virtual void ScreennameFormatted(bool /*Success*/, int /*intPermissionFlag*/) {}
    virtual void EmailUpdated(bool /*Success*/, int /*intPermissionFlag*/) {}
    virtual void RegistrationStatusUpdated(bool /*Success*/, int /*intPermissionFlag*/) {}
    virtual void PasswordUpdated(bool /*Success*/, int /*intPermissionFlag*/) {}
    virtual void FormattedScreennameResults(const std::string& /*strScreennameFormat*/,
                                            int /*intPermissionFlag*/) {}
    virtual void EmailResults(const std::string& /*strEmail*/, int /*intPermissionFlag*/) {}
    virtual void RegistrationResults(int /*intRegType*/, int /*intPermissionFlag*/) {}
};

}  // namespace oscar
