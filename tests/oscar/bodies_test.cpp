#include "oscar/bodies.h"

#include <gtest/gtest.h>

#include "oscar/encoding.h"

namespace oscar {
namespace {

TEST(Capabilities, FollowTheTwoOptions) {
    const std::string both = BuildCapabilities(0, {}, {true, true});
    ASSERT_EQ(both.size(), 272u);
    EXPECT_EQ(BytesToHex(both.substr(0, 16)), "094601054C7F11D18222444553540000");
    EXPECT_EQ(BytesToHex(both.substr(14 * 16, 16)), "748F2420628711D18222444553540000");
    EXPECT_EQ(BytesToHex(both.substr(256)), "094600014C7F11D18222444553540000");
    EXPECT_EQ(BuildCapabilities(0, {}, {true, false}).size(), 256u);
    EXPECT_EQ(BuildCapabilities(0, {}, {false, false}), "");

    const std::vector<std::string> ids = {"00112233445566778899AABBCCDDEEFF", "0102"};
    EXPECT_EQ(BytesToHex(BuildCapabilities(1, ids, {true, true})),
              "00112233445566778899AABBCCDDEEFF0102");
    EXPECT_EQ(BuildCapabilities(2, ids, {true, true}), "");
}

}  // namespace
}  // namespace oscar
