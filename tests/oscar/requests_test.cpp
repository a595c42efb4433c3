// The sign-on on index 0 and every request's bytes, compared with hex
// written out by hand, and the events the services' replies raise.
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

TEST_F(SignOnTest, TheAuthorizationAndTheBosSetupEndInLoggedInOnce) {
    client.SetCapabilityOptions({false, true});
    client.Login("Bot Name", "secret1", 5190, false, false, "login.example.net");
    sockets.Deliver(0, Greeting());
    EXPECT_EQ(sockets.TakePayloads(0),
              (Lines{"00000001", "0017000600000000000100010008426F74204E616D65"}));

    // A 16-byte key at position 19. The request names the account and hashes
    // that key (the hash and the rest of the request: the login request test's).
    const std::string key = "0123456789ABCDEF";
    sockets.Deliver(0, Frame(2, HexToBytes("001700070000000000000010") + key + "trailing"));
    const Lines sent = sockets.TakePayloads(0);
    ASSERT_EQ(sent.size(), 1u);
    EXPECT_EQ(sent[0].substr(0, 84), "0017000200000000000100010008426F74204E616D6500250010" +
                                         BytesToHex(LoginHash(key, "secret1")));

    const int closes = sockets.sockets[0].closes;
    sockets.Deliver(0, GoodReply());
    EXPECT_EQ(sockets.Tag(0), "[BOS]connecting");
    EXPECT_EQ(sockets.connectLog.back(), (std::pair<int, std::string>{0, "bos.example.net:5190"}));
    EXPECT_EQ(sockets.sockets[0].closes, closes + 1);

    // The BOS greeting is answered with the 256-byte cookie, numbered on
    // from the authorization's frames; the setup follows.
    BosSetup();
    EXPECT_EQ(events.Take(),
              testing_support::SignOnEvents("LoggedIn(BotName, bot@example.net, bos.example.net)"));
    EXPECT_EQ(BytesToHex(sockets.written.at(0).second.substr(0, 6)), "2A0100030108");
    EXPECT_EQ(
        sockets.TakePayloads(0),
        (Lines{"0000000100060100" + BytesToHex(std::string(256, '\x5A')),
               "00010017000000000001"
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
    EXPECT_EQ(sockets.TakePayloads(0).at(0), "00000001000600024332");

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

using RequestsTest = ClientTest;

TEST_F(RequestsTest, LoginResetsAndConnectsToTheNormalizedServer) {
    SignOn();
    JoinRoom("Lobby", 4);
    events.Take();
    client.Login("Bot", "pw", 5190, true, true, " Login.Example.NET ");
    EXPECT_EQ(events.Take(), Lines{"LoginStatus(Connecting to Auth server...)"}) << "no LoggedOff";
    EXPECT_EQ(std::tuple(client.Chat().size(), sockets.sockets.size(), sockets.connectLog.back()),
              std::tuple(0u, 1u, std::pair<int, std::string>{0, "login.example.net:5190"}));
}

TEST_F(RequestsTest, BosRequestsHaveTheirExactBytesOrAreNotSent) {
    SignOn();
    // Too long for their fields: nothing but the join's service request
    // (the room request waits for navigation).
    client.SendIM(std::string(256, 'n'), "hi");
    client.GetUserInfo(std::string(300, 'n'), 0);
    client.SetProfile(std::string(70000, 'p'));
    client.JoinChat("Lobby", 70000, 0);
    client.NewRegStatus(-1);

    client.SendIM("Bob", "hi");
    client.EmailLookup("a@b.c");
    client.GetUserInfo("Bob", 1);
    client.SetIdle(600);
    client.SetIdle(0);
    client.SetCapabilities({"094601054C7F11D18222444553540000"});
    client.InviteChatBuddy("Bob");
    client.SetProfile("P");
    EXPECT_EQ(sockets.TakePayloads(0),
              (Lines{"00010004000000000001000D",
                     "000400060000000000040000000000000001000103426F62"
                     "000200110501000301010201010006000000006869",
                     "000A00020000000000026140622E63", "000200150000000000150000000103426F62",
                     "0001001100000000001100000001", "0001001100000000001100000000",
                     "0002000400000000000400050010094601054C7F11D18222444553540000",
                     "000400060000000000060000000000000001000203426F62",
                     "0002000400000000000400010021" +
                         BytesToHex("text/x-aolrtf; charset=\"us-ascii\"") + "0002000150"}));
}

TEST_F(RequestsTest, InARoomInvitationsNameItAndAJoinAsksNavigationAtOnce) {
    SignOn();
    JoinRoom("Lobby", 4);
    const int nav = client.ChatNavIndex();
    sockets.written.clear();
    client.InviteChatBuddy("Bob");
    // "4-0-Lobby" is the room cookie the test server side gave.
    EXPECT_EQ(sockets.TakePayloads(0),
              Lines{"000400060000000000060000000000000001000203426F62"
                    "0005004F00000000000000000001748F2420628711D18222444553540000"
                    "000A00020001000F0000000C00154A6F696E206D6520696E207468697320636861742E"
                    "2711000E000409342D302D4C6F6262790000"});
    client.JoinChat("My Room", 5, 0);
    EXPECT_EQ(sockets.TakePayloads(nav),
              (Lines{"000D00080000000000080005066372656174650000010003"
                     "00D6000875732D617363696900D300074D7920526F6F6D00D70002656E"}));
}

TEST_F(RequestsTest, SendChatCountsItsCookieAndNeedsARoom) {
    SignOn();
    const int room = JoinRoom("Lobby", 4);
    sockets.written.clear();
    client.SendChat(room, "hi");
    EXPECT_EQ(sockets.TakePayloads(room),
              (Lines{"000E000500000000000500000000000000000003000100000006000000050018"
                     "0002000875732D617363696900030002656E000100026869"}));
    // Counter 1 .. 32000, then 1 again.
    const auto counter = [&] { return BytesToHex(sockets.written.back().second.substr(22, 2)); };
    for (int i = 1; i <= 32000; ++i)
        client.SendChat(room, "x");
    ASSERT_EQ(sockets.written.size(), 32000u);
    EXPECT_EQ(counter(), "7D00");
    client.SendChat(room, "x");
    EXPECT_EQ(counter(), "0001");

    // A line that goes nowhere or is too long still uses up its number.
    sockets.written.clear();
    client.SendChat(0, "nobody hears");
    client.SendChat(49, "no such socket");
    client.SendChat(room, std::string(70000, 'x'));
    EXPECT_TRUE(sockets.written.empty());
    client.SendChat(room, "x");
    EXPECT_EQ(counter(), "0005");
}

// Instant messages, user information, e-mail lookup, admin, buddy icons and
// the errors that end a join.
using ServicesTest = ClientTest;

TEST_F(ServicesTest, RepliesAndErrorsOfTheServicesRaiseTheirEvents) {
    const auto deliver = [&](int index, const std::string& snacHex, const std::string& tlvs = "") {
        sockets.Deliver(index, Frame(2, HexToBytes(snacHex) + tlvs));
    };
    const auto code = [](const char* hex) { return MakeTLV("0008", 2, HexToBytes(hex)); };
    sockets.Create(1);
    sockets.Create(4);
    sockets.Create(6);
    // Navigation errors raise one event per code; the BOS connection's
    // generic error (after its optional block) looks at its first TLV only.
    deliver(1, "000D00010000000000000002", code("0033") + code("0099"));
    deliver(0, "000100018000000000000003AABBCC0004", code("002E"));
    deliver(0, "000100010000000000000005", MakeTLV("0001", 2, "") + code("004A"));
    deliver(0, "000400010000000000000004");
    deliver(0, "000A00010000000000000021");
    deliver(4, "00070001000000000000000E");
    deliver(4, "000700010000000000000014");
    deliver(0, "000A0003000000000000", MakeTLV("0009", 2, "ann") + MakeTLV("0009", 2, "bob"));
    // Admin replies: one event per TLV.
    deliver(4, "0007000300000000000000030003",
            MakeTLV("0001", 2, "Bot Name") + MakeTLV("0011", 2, "a@b.c") +
                MakeTLV("0013", 2, HexToBytes("0002")));
    deliver(4, "0007000500000000000000010002",
            MakeTLV("0001", 2, "") + MakeTLV("0008", 2, HexToBytes("0001")));
    deliver(4, "0007000500000000000000030004",
            MakeTLV("0001", 2, "") + MakeTLV("0011", 2, "") + MakeTLV("0013", 2, "") +
                MakeTLV("0002", 2, ""));
    // Instant messages on channel 1 only.
    for (const std::string channel : {"0002", "0001"}) {
        deliver(0, "000400070000000000000000000000000001" + channel,
                MakeTLV("", 1, "Some Body") + HexToBytes("00000001") +
                    MakeTLV("0001", 2, HexToBytes("0010")) +
                    MakeTLV("0002", 2,
                            MakeTLV("0501", 2, HexToBytes("01")) +
                                MakeTLV("0101", 2, HexToBytes("00000000") + "<b>hi</b>")) +
                    MakeTLV("0003", 2, ""));
    }
    // Buddy icons: after a 5-byte name, the length is at positions 44-45 of
    // the frame.
    deliver(6, "00100005000000000000",
            MakeTLV("", 1, "abcde") + std::string(21, '\x01') + HexToBytes("0003") + "ICOjunk");
    deliver(6, "00100007000000000000",
            MakeTLV("", 1, "x") + std::string(21, '\0') + HexToBytes("0000"));
    EXPECT_EQ(
        events.Take(),
        (Lines{"Error(Join chat failed, invalid chat name., 51, 0, 0002)",
               "Error(Join chat failed, unknown error., 153, 0, 0002)",
               "Error(Join chat failed, you are already in this chat., 46, 0, 0004)",
               "Error(User not available, 4, 0, 0004)",
               "Error(Unknown e-mail lookup error., 33, 0, 000A)",
               "Error(No e-mail entered., 14, 0, 0007)", "Error(Unknown Admin Error., 20, 0, 0007)",
               "EmailLookupResults(ann, bob)", "FormattedScreennameResults(Bot Name, 3)",
               "EmailResults(a@b.c, 3)", "RegistrationResults(2, 3)",
               "ScreennameFormatted(false, 1)", "ScreennameFormatted(true, 3)",
               "EmailUpdated(true, 3)", "RegistrationStatusUpdated(true, 3)",
               "PasswordUpdated(true, 3)", "InstantMessage(Some Body, hi, 1)",
               "IncomingBuddyIcon(abcde, ICO)", "IncomingBuddyIcon(x, )"}));
}

}  // namespace
}  // namespace oscar
