// The sign-on on index 0, frame by frame, with the bytes the client answers.
#include <gtest/gtest.h>

#include "oscar/login_request.h"
#include "support/client_fixture.h"

namespace oscar {
namespace {

using Lines = std::vector<std::string>;

using namespace testing_support;

class SignOnTest : public ClientTest {
  protected:
    std::string AuthReply(const std::string& tlvs) {
        return Frame(2, HexToBytes("00170003000000000000") + tlvs);
    }
    std::string GoodReply() {
        return AuthReply(
            MakeTLV("0001", 2, "BotName") + MakeTLV("0005", 2, "bos.example.net:5190") +
            MakeTLV("0006", 2, std::string(256, '\x5A')) + MakeTLV("0011", 2, "bot@example.net"));
    }
    // The BOS setup from the greeting to the rights reply.
    void BosSetup() {
        sockets.Deliver(0, Greeting());
        sockets.Deliver(0, SnacFrame("00010003800000000000000100020003000400060008"));
        sockets.Deliver(0, SnacFrame("000100180000000000000001000400130003"));
        sockets.Deliver(0, SnacFrame("000100070000000000000005"));
        sockets.Deliver(0, SnacFrame("0004000500000000000400020000000B1F4003E703E700000000"));
        sockets.Deliver(0, SnacFrame("00090003000000000009000200000001"));
    }
};

TEST_F(SignOnTest, TheAuthorizationExchange) {
    client.Login("Bot Name", "secret1", 5190, false, false, "login.example.net");
    sockets.Deliver(0, Greeting());
    EXPECT_EQ(sockets.TakePayloads(0),
              (Lines{"00000001", "0017000600000000000100010008426F74204E616D65"}));

    // A 16-byte key at position 19.
    const std::string key = "0123456789ABCDEF";
    sockets.Deliver(0, Frame(2, HexToBytes("001700070000000000000010") + key + "trailing"));
    const Lines sent = sockets.TakePayloads(0);
    ASSERT_EQ(sent.size(), 1u);
    // The request names the account and hashes that key (the hash and the
    // rest of the request: the login request test's).
    EXPECT_EQ(sent[0].substr(0, 52), "0017000200000000000100010008426F74204E616D6500250010");
    EXPECT_EQ(sent[0].substr(52, 32), BytesToHex(LoginHash(key, "secret1")));

    const int closes = sockets.sockets[0].closes;
    sockets.Deliver(0, GoodReply());
    EXPECT_EQ(sockets.Tag(0), "[BOS]connecting");
    EXPECT_EQ(sockets.connectLog.back(), (std::pair<int, std::string>{0, "bos.example.net:5190"}));
    EXPECT_EQ(sockets.sockets[0].closes, closes + 1);

    // The BOS greeting is answered with the 256-byte cookie, numbered on
    // from the authorization's frames.
    sockets.Deliver(0, Greeting());
    ASSERT_EQ(sockets.written.size(), 1u);
    EXPECT_EQ(BytesToHex(sockets.written[0].second.substr(0, 6)), "2A0100030108");
    EXPECT_EQ(sockets.TakePayloads(0),
              Lines{"0000000100060100" + BytesToHex(std::string(256, '\x5A'))});
}

TEST_F(SignOnTest, TheBosSetupEndsInLoggedInOnce) {
    client.SetCapabilityOptions({false, true});
    client.Login("Bot Name", "secret1", 5190, false, false, "login.example.net");
    sockets.Deliver(0, Greeting());
    sockets.Deliver(0, SnacFrame("0017000700000000000000044B455931"));
    sockets.Deliver(0, GoodReply());
    sockets.written.clear();
    BosSetup();

    EXPECT_EQ(events.Take(),
              testing_support::SignOnEvents("LoggedIn(BotName, bot@example.net, bos.example.net)"));

    const Lines sent = sockets.TakePayloads(0);
    ASSERT_EQ(sent.size(), 15u);
    EXPECT_EQ(
        Lines(sent.begin() + 1, sent.end()),
        (Lines{"00010017000000000001"
               "0001000400130003000200010003000100040001000600010008000100090001000A0001000B0001",
               "00010006000000000001", "0001000800000000000800010002000300040005",
               "0001000E00000000000E", "00130002000000000002", "001300050000000000054551B1B000BB",
               "000200020000000000FE", "000300020000000000FF", "00040004000000000004",
               "00090002000000000009", "00130007000000000007",
               "0002000400000000000400050010094600014C7F11D1822244455354000000020046" +
                   BytesToHex("<body bgcolor=\"black\"><font color=\"white\"><b>TolSock 0.3 "
                              "Alpha<br><br>") +
                   "00060006000400020002",
               "0004000200000000000200020000000B1F4003E703E700000000",
               "00010002000000000001"
               "00010004011008E500130003011008E500020001011008E500030001011008E5"
               "00040001011008E500060001011008E5000800010104000100090001011008E5"
               "000A0001011008E5000B0001011008E5"}));
}

TEST_F(SignOnTest, AnAuthorizationErrorEndsTheSignOn) {
    client.Login("Bot", "pw", 5190, false, false, "h");
    events.Take();
    // A sign-off frame before sign-on says nothing and ends nothing.
    sockets.Deliver(0, Frame(4, MakeTLV("0009", 2, HexToBytes("01"))));
    EXPECT_TRUE(client.Authorizing());
    sockets.Deliver(0,
                    AuthReply(MakeTLV("0001", 2, "Bot") + MakeTLV("0008", 2, HexToBytes("0005")) +
                              MakeTLV("0005", 2, "bos.example.net:5190")));
    EXPECT_EQ(events.Take(), Lines{"LoginError(The password you entered is not valid., 5)"});
    EXPECT_EQ(sockets.connectLog.size(), 1u) << "no BOS connection";
    EXPECT_FALSE(client.Authorizing());
}

TEST_F(SignOnTest, MigrationRepeatsTheSetupSilently) {
    SignOn();
    sockets.Deliver(0, SnacFrame("0001000B000000000000"));
    EXPECT_TRUE(client.Paused());
    EXPECT_EQ(sockets.TakePayloads(0),
              Lines{"0001000C00000000000C00010013000200030004000600080009000A000B"});
    // A sign-off frame while paused signs nothing off.
    sockets.Deliver(0, Frame(4, ""));
    EXPECT_TRUE(client.LoggedInState());

    sockets.Deliver(
        0, Frame(2, HexToBytes("000100128000000000000006000400000000") + HexToBytes("0000") +
                        MakeTLV("0005", 2, "bos2.example.net") + MakeTLV("0006", 2, "C2")));
    EXPECT_EQ(sockets.connectLog.back(), (std::pair<int, std::string>{0, "bos2.example.net:5190"}));
    BosSetup();
    // The setup's own steps report as usual; the greeting's status and a
    // second LoggedIn are left out.
    EXPECT_EQ(events.Take(),
              (Lines{"LoginStatus(Requesting Supported Services Versions...)",
                     "LoginStatus(Requesting Rate Limit Information...)",
                     "LoginStatus(Sending Service Requests...)", "LoginStatus(Login Completed!)"}));
    EXPECT_FALSE(client.Paused());
    const auto sent = sockets.TakePayloads(0);
    ASSERT_FALSE(sent.empty());
    EXPECT_EQ(sent[0], "00000001000600024332");

    sockets.Deliver(0, SnacFrame("0001000B000000000000"));
    sockets.Deliver(0, SnacFrame("0001000D000000000000"));
    EXPECT_FALSE(client.Paused());
    // Signed on again, a sign-off frame ends the session; its code may take
    // two bytes.
    events.Take();
    sockets.Deliver(0, Frame(4, MakeTLV("0009", 2, HexToBytes("0102"))));
    EXPECT_FALSE(client.LoggedInState());
    EXPECT_EQ(client.LastSessionEnd().description, "Signed off by the server: error code 258.");
}

TEST_F(SignOnTest, ABosAddressWithoutAPortIsNeverConnectedTo) {
    client.Login("Bot", "pw", 5190, false, false, "h");
    sockets.Deliver(0, AuthReply(MakeTLV("0005", 2, "bos.example.net") + MakeTLV("0006", 2, "C")));
    EXPECT_EQ(sockets.connectLog, (std::vector<std::pair<int, std::string>>{{0, "h:5190"}}));
    EXPECT_FALSE(client.Authorizing());
}

}  // namespace
}  // namespace oscar
