#include "oscar/md5.h"

#include <gtest/gtest.h>

#include <QCryptographicHash>
#include <random>

#include "oscar/encoding.h"

namespace oscar {
namespace {

std::string DigestHex(std::string_view text) {
    return BytesToHex(MD5Digest(text));
}

TEST(Md5, MatchesTheRfc1321TestSuite) {
    EXPECT_EQ(DigestHex(""), "D41D8CD98F00B204E9800998ECF8427E");
    EXPECT_EQ(DigestHex("abc"), "900150983CD24FB0D6963F7D28E17F72");
    EXPECT_EQ(DigestHex("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789"),
              "D174AB98D277D9F5A5611C2C9F419D9F");
    EXPECT_EQ(
        DigestHex(
            "12345678901234567890123456789012345678901234567890123456789012345678901234567890"),
        "57EDF4A22BE3C955AC49DA2E2107B67A");
}

TEST(Md5, AgreesWithQtOnRandomInputsOfEveryLengthTo200) {
    std::mt19937 rng(20261122);
    std::uniform_int_distribution<int> byte(0, 255);
    int compared = 0;
    for (int length = 0; length <= 200; ++length) {
        for (int round = 0; round < 15; ++round) {
            std::string input;
            for (int i = 0; i < length; ++i)
                input.push_back(static_cast<char>(byte(rng)));
            const QByteArray expected = QCryptographicHash::hash(
                QByteArray(input.data(), static_cast<qsizetype>(input.size())),
                QCryptographicHash::Md5);
            ASSERT_EQ(MD5Digest(input), expected.toStdString()) << "length " << length;
            ++compared;
        }
    }
    EXPECT_EQ(compared, 201 * 15);
}

TEST(Md5, GivesTheSameDigestWhateverTheFeedSizes) {
    std::string input;
    for (int i = 0; i < 1000; ++i)
        input.push_back(static_cast<char>(i * 7));
    const std::string whole = MD5Digest(input);
    for (std::size_t piece : {1u, 3u, 63u, 64u, 65u, 200u}) {
        Md5 md5;
        for (std::size_t pos = 0; pos < input.size(); pos += piece) {
            md5.Update(std::string_view(input).substr(pos, piece));
        }
        EXPECT_EQ(md5.Finish(), whole) << "pieces of " << piece;
    }
}

}  // namespace
}  // namespace oscar
