#include "oscar/md5.h"

#include <gtest/gtest.h>

#include <QCryptographicHash>
#include <random>

#include "oscar/encoding.h"

namespace oscar {
namespace {

TEST(Md5, MatchesTheRfc1321TestSuite) {
    const std::pair<std::string, const char*> cases[] = {
        {"", "D41D8CD98F00B204E9800998ECF8427E"},
        {"abc", "900150983CD24FB0D6963F7D28E17F72"},
        {"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789",
         "D174AB98D277D9F5A5611C2C9F419D9F"},
        {"12345678901234567890123456789012345678901234567890123456789012345678901234567890",
         "57EDF4A22BE3C955AC49DA2E2107B67A"}};
    for (const auto& [text, digest] : cases)
        EXPECT_EQ(BytesToHex(MD5Digest(text)), digest) << text;
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
            const std::string expected =
                QCryptographicHash::hash(QByteArray::fromStdString(input), QCryptographicHash::Md5)
                    .toStdString();
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
