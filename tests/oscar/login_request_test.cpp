// The login request, with its hash, and the MD5 under the hash.
#include "oscar/login_request.h"

#include <gtest/gtest.h>

#include <QCryptographicHash>
#include <random>

#include "oscar/encoding.h"
#include "oscar/md5.h"

namespace oscar {
namespace {

std::string QtMd5(const std::string& bytes) {
    return QCryptographicHash::hash(QByteArray::fromStdString(bytes), QCryptographicHash::Md5)
        .toStdString();
}

TEST(LoginRequest, CarriesThirteenTLVsInOrder) {
    const std::string key = "1234567890";
    const std::string request = BuildLoginRequest("Abc Def", "hunter22", key);
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

// Every length to 200 (each padding case and block boundary), fed whole and
// in pieces, against Qt's MD5.
TEST(Md5, AgreesWithQtWhateverTheLengthAndFeedSizes) {
    std::mt19937 rng(20261122);
    std::uniform_int_distribution<int> byte(0, 255);
    for (int length = 0; length <= 200; ++length) {
        for (std::size_t piece : {1u, 3u, 63u, 64u, 65u}) {
            std::string input;
            for (int i = 0; i < length; ++i)
                input.push_back(static_cast<char>(byte(rng)));
            const std::string expected = QtMd5(input);
            ASSERT_EQ(MD5Digest(input), expected) << "length " << length;
            Md5 md5;
            for (std::size_t pos = 0; pos < input.size(); pos += piece)
                md5.Update(std::string_view(input).substr(pos, piece));
            ASSERT_EQ(md5.Finish(), expected) << "length " << length << " in pieces of " << piece;
        }
    }
}

}  // namespace
}  // namespace oscar
