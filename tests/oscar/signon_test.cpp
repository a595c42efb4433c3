// The sign-on on index 0, frame by frame, with the bytes the client answers.
#include <gtest/gtest.h>

#include "oscar/bodies.h"
#include "oscar/login_request.h"
#include "support/client_fixture.h"

namespace oscar {
namespace {

using testing_support::ClientTest;
using testing_support::Frame;
using testing_support::Greeting;
using testing_support::SnacFrame;

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
        sockets.Deliver(0, SnacFrame("00010003800000000000"
                                     "000100020003000400060008"));
        sockets.Deliver(0, SnacFrame("00010018000000000000"
                                     "0001000400130003"));
        sockets.Deliver(0, SnacFrame("00010007000000000000"
                                     "0005"));
        sockets.Deliver(0, SnacFrame("00040005000000000004"
                                     "00020000000B1F4003E703E700000000"));
        sockets.Deliver(0, SnacFrame("00090003000000000009"
                                     "000200000001"));
    }
};

TEST_F(SignOnTest, TheAuthorizationExchange) {
    client.Login("Bot Name", "secret1", 5190, false, false, "login.example.net");
    sockets.Deliver(0, Greeting());
    EXPECT_EQ(sockets.TakePayloads(0), (std::vector<std::string>{"00000001",
                                                                 "001700060000000000010001"
                                                                 "0008"
                                                                 "426F74204E616D65"}));

    // A 16-byte key at position 19.
    const std::string key = "0123456789ABCDEF";
    sockets.Deliver(0, Frame(2, HexToBytes("00170007000000000000"
                                           "0010") +
                                    key + "trailing"));
    const std::vector<std::string> sent = sockets.TakePayloads(0);
    ASSERT_EQ(sent.size(), 1u);
    EXPECT_EQ(sent[0], BytesToHex(BuildLoginRequest("Bot Name", "secret1", key)));
    EXPECT_EQ(sent[0].substr(20 + 24 + 8, 32), BytesToHex(LoginHash(key, "secret1")));

    const int closes = sockets.sockets[0].closes;
    sockets.Deliver(0, GoodReply());
    EXPECT_FALSE(client.Authorizing());
    EXPECT_EQ(sockets.Tag(0), "[BOS]connecting");
    EXPECT_EQ(sockets.connectLog.back(), (std::pair<int, std::string>{0, "bos.example.net:5190"}));
    EXPECT_EQ(sockets.sockets[0].closes, closes + 1);

    // The BOS greeting is answered with the 256-byte cookie.
    sockets.Deliver(0, Greeting());
    EXPECT_EQ(sockets.TakePayloads(0),
              std::vector<std::string>{"00000001"
                                       "0006"
                                       "0100" +
                                       BytesToHex(std::string(256, '\x5A'))});
}

TEST_F(SignOnTest, TheBosSetupEndsInLoggedInOnce) {
    client.SetCapabilityOptions({false, true});
    client.Login("Bot Name", "secret1", 5190, false, false, "login.example.net");
    sockets.Deliver(0, Greeting());
    sockets.Deliver(0, SnacFrame("00170007000000000000"
                                 "0004"
                                 "4B455931"));
    sockets.Deliver(0, GoodReply());
    sockets.written.clear();
    BosSetup();

    EXPECT_EQ(events.Take(),
              testing_support::SignOnEvents("LoggedIn(BotName, bot@example.net, bos.example.net)"));

    const std::vector<std::string> sent = sockets.TakePayloads(0);
    ASSERT_EQ(sent.size(), 1u + 1 + 1 + 8 + 4);
    EXPECT_EQ(sent[1], "00010017000000000001" + BytesToHex(FixedFamilyVersions()));
    EXPECT_EQ(sent[2], "00010006000000000001");
    const std::vector<std::string> services(sent.begin() + 3, sent.begin() + 11);
    EXPECT_EQ(services, (std::vector<std::string>{"0001000800000000000800010002000300040005",
                                                  "0001000E00000000000E", "00130002000000000002",
                                                  "001300050000000000054551B1B000BB",
                                                  "000200020000000000FE", "000300020000000000FF",
                                                  "00040004000000000004", "00090002000000000009"}));
    EXPECT_EQ(sent[11], "00130007000000000007");
    EXPECT_EQ(sent[12],
              "00020004000000000004"
              "0005"
              "0010"
              "094600014C7F11D18222444553540000"
              "0002"
              "0046" +
                  BytesToHex("<body bgcolor=\"black\"><font color=\"white\"><b>TolSock 0.3 "
                             "Alpha<br><br>") +
                  "0006"
                  "0006"
                  "000400020002");
    EXPECT_EQ(sent[13],
              "00040002000000000002"
              "00020000000B1F4003E703E700000000");
    EXPECT_EQ(sent[14], "00010002000000000001" + BytesToHex(FixedClientReady()));
    EXPECT_TRUE(client.LoggedInState());
}

TEST_F(SignOnTest, RightsBeforeIcbmParametersSendAnEmptyBlock) {
    client.Login("Bot", "pw", 5190, false, false, "h");
    sockets.Deliver(0, GoodReply());
    sockets.written.clear();
    sockets.Deliver(0, SnacFrame("00090003000000000000"));
    const std::vector<std::string> sent = sockets.TakePayloads(0);
    ASSERT_EQ(sent.size(), 4u);
    EXPECT_EQ(sent[2], "00040002000000000002");
}

TEST_F(SignOnTest, AuthorizationErrorsEndTheSignOn) {
    struct Case {
        const char* code;
        std::string event;
    };
    for (const Case& c :
         {Case{"0005", "LoginError(The password you entered is not valid., 5)"},
          Case{"0001", "LoginError(Unregistered screenname., 1)"},
          Case{"001D", "LoginError(You are attempting to sign on again too soon., 29)"},
          Case{"0018", "LoginError(Rate limit exceeded. Please try again later, 24)"},
          Case{"0063", "LoginError(Unknown Error., 99)"}}) {
        client.Login("Bot", "pw", 5190, false, false, "h");
        events.Take();
        const std::size_t connects = sockets.connectLog.size();
        sockets.Deliver(
            0, AuthReply(MakeTLV("0001", 2, "Bot") + MakeTLV("0008", 2, HexToBytes(c.code)) +
                         MakeTLV("0005", 2, "bos.example.net:5190")));
        EXPECT_EQ(events.Take(), std::vector<std::string>{c.event});
        EXPECT_EQ(sockets.connectLog.size(), connects) << "no BOS connection";
        EXPECT_FALSE(client.Authorizing());
    }
}

TEST_F(SignOnTest, MigrationRepeatsTheSetupSilently) {
    SignOn();
    sockets.Deliver(0, SnacFrame("0001000B000000000000"));
    EXPECT_TRUE(client.Paused());
    EXPECT_EQ(
        sockets.TakePayloads(0),
        std::vector<std::string>{"0001000C00000000000C00010013000200030004000600080009000A000B"});
    // A sign-off frame while paused signs nothing off.
    sockets.Deliver(0, Frame(4, ""));
    EXPECT_TRUE(client.LoggedInState());

    sockets.Deliver(0, Frame(2, HexToBytes("00010012800000000000"
                                           "0006000400000000") +
                                    HexToBytes("0000") + MakeTLV("0005", 2, "bos2.example.net") +
                                    MakeTLV("0006", 2, "C2")));
    EXPECT_EQ(sockets.connectLog.back(), (std::pair<int, std::string>{0, "bos2.example.net:5190"}));
    BosSetup();
    // The setup's own steps report as usual; the greeting's status and a
    // second LoggedIn are left out.
    EXPECT_EQ(events.Take(),
              (std::vector<std::string>{"LoginStatus(Requesting Supported Services Versions...)",
                                        "LoginStatus(Requesting Rate Limit Information...)",
                                        "LoginStatus(Sending Service Requests...)",
                                        "LoginStatus(Login Completed!)"}));
    EXPECT_FALSE(client.Paused());
    const auto sent = sockets.TakePayloads(0);
    ASSERT_FALSE(sent.empty());
    EXPECT_EQ(sent[0],
              "00000001"
              "0006"
              "0002"
              "4332");

    sockets.Deliver(0, SnacFrame("0001000B000000000000"));
    sockets.Deliver(0, SnacFrame("0001000D000000000000"));
    EXPECT_FALSE(client.Paused());
}

TEST_F(SignOnTest, ASignOffFrameBeforeSignOnDoesNothing) {
    client.Login("Bot", "pw", 5190, false, false, "h");
    events.Take();
    sockets.Deliver(0, Frame(4, MakeTLV("0009", 2, HexToBytes("01"))));
    EXPECT_TRUE(client.Authorizing());
    EXPECT_TRUE(events.log.empty());
}

}  // namespace
}  // namespace oscar
