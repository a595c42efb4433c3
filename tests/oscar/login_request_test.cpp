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
}

TEST(LoginRequest, CarriesThirteenTLVsInOrder) {
    const std::string key = "1234567890";
    const std::string request = BuildLoginRequest("Abc Def", "hunter22", key);
    ASSERT_EQ(request.size(), 149u);

    const std::string expected = HexToBytes(
                                     "00170002000000000001"       // SNAC 0017/0002, request id 1
                                     "0001000741626320446566") +  // screen name as typed
                                 HexToBytes("00250010") +
                                 QtMd5(key + QtMd5("hunter22") + "AOL Instant Messenger (SM)") +
                                 HexToBytes("004C0000") + HexToBytes("0003002D") +
                                 "AOL Instant Messenger, version 5.5.3599/WIN32" +
                                 HexToBytes(
                                     "00160002006D001700020005001800020005001900020000001A00020E0F"
                                     "001400040000010A000F0002656E000E00027573004A000101");
    EXPECT_EQ(BytesToHex(request), BytesToHex(expected));
}

TEST(LoginRequest, RefusesAScreenNameTooLongForItsField) {
    EXPECT_EQ(BuildLoginRequest(std::string(65536, 'a'), "pw", "key"), "");
    EXPECT_EQ(BuildLoginRequest("", "pw", "key").size(), 142u);
}

}  // namespace
}  // namespace oscar
