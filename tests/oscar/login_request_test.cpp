#include "oscar/login_request.h"

#include <gtest/gtest.h>

#include <QCryptographicHash>

#include "oscar/encoding.h"

namespace oscar {
namespace {

std::string QtMd5(const std::string& bytes) {
    return QCryptographicHash::hash(QByteArray::fromStdString(bytes), QCryptographicHash::Md5)
        .toStdString();
}

TEST(LoginHash, HashesKeyPasswordDigestAndTheFixedString) {
    const std::string key = "0f6b5cbc-8d4e-4a43-9c53-3c6c7ee1c1d2";  // a 36-byte server key
    EXPECT_EQ(LoginHash(key, "secret1"),
              QtMd5(key + QtMd5("secret1") + "AOL Instant Messenger (SM)"));
    EXPECT_EQ(LoginHash("", "pass"), QtMd5(QtMd5("pass") + "AOL Instant Messenger (SM)"));
    EXPECT_NE(LoginHash(key, "secret1"), LoginHash(key, "secret2"));
}

TEST(LoginRequest, CarriesThirteenTLVsInOrder) {
    const std::string key = "1234567890";
    const std::string request = BuildLoginRequest("Abc Def", "hunter22", key);
    ASSERT_EQ(request.size(), 149u);

    const std::string expected = HexToBytes(
                                     "00170002000000000001"  // SNAC 0017/0002, request id 1
                                     "0001"
                                     "0007"
                                     "41626320446566") +  // screen name as typed
                                 HexToBytes(
                                     "0025"
                                     "0010") +
                                 QtMd5(key + QtMd5("hunter22") + "AOL Instant Messenger (SM)") +
                                 HexToBytes(
                                     "004C"
                                     "0000") +
                                 HexToBytes(
                                     "0003"
                                     "002D") +
                                 "AOL Instant Messenger, version 5.5.3599/WIN32" +
                                 HexToBytes(
                                     "0016"
                                     "0002"
                                     "006D"
                                     "0017"
                                     "0002"
                                     "0005"
                                     "0018"
                                     "0002"
                                     "0005"
                                     "0019"
                                     "0002"
                                     "0000"
                                     "001A"
                                     "0002"
                                     "0E0F"
                                     "0014"
                                     "0004"
                                     "0000010A"
                                     "000F"
                                     "0002"
                                     "656E"
                                     "000E"
                                     "0002"
                                     "7573"
                                     "004A"
                                     "0001"
                                     "01");
    EXPECT_EQ(BytesToHex(request), BytesToHex(expected));
}

TEST(LoginRequest, RefusesAScreenNameTooLongForItsField) {
    EXPECT_EQ(BuildLoginRequest(std::string(65536, 'a'), "pw", "key"), "");
    EXPECT_EQ(BuildLoginRequest("", "pw", "key").size(), 142u);
}

}  // namespace
}  // namespace oscar
