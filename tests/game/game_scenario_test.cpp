// Whole games played from a script of chat lines and timer ticks, asserting
// every line the bot sends, style prefix included.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>

#include "support/game_fixture.h"

namespace game {
namespace {

using Lines = std::vector<std::string>;

using namespace testing_support;

const std::string P =
    "<html><body bgcolor=\"000000\"><font color=\"00bfff\" face=\"Times New Roman\">";

constexpr int kRoom = 3;

class GameScenario : public ::testing::Test, protected GameOnFakes {
  protected:
    GameScenario() : GameOnFakes(2026) {
        chat.firstRoom = kRoom;
        commands.Ops().Add("boss");
    }

    void Say(const std::string& who, const std::string& line, int room = kRoom) {
        commands.ChatMessage(room, who, line);
    }

    // The lines as sent: each with the style prefix.
    static Lines L(const Lines& texts) {
        Lines lines;
        for (const std::string& t : texts)
            lines.push_back(P + t);
        return lines;
    }

    // One row of a scene: `ticks` of `timer` (if any), then `who` says `line`
    // (if anyone), then the bot has sent exactly `sent`; `paused`, where
    // given: whether the command pause runs after it.
    struct Step {
        FakeTimer* timer;
        int ticks;
        std::string who, line;
        Lines sent;
        std::optional<bool> paused = {};
    };
    void Play(const std::vector<Step>& scene) {
        for (const Step& s : scene) {
            SCOPED_TRACE(std::to_string(s.ticks) + " ticks, " + s.who + ": " + s.line);
            if (s.timer) s.timer->Tick(s.ticks);
            if (!s.who.empty()) Say(s.who, s.line);
            EXPECT_EQ(Sent(), L(s.sent));
            EXPECT_EQ(tmrCcoms.IsEnabled(), s.paused.value_or(tmrCcoms.IsEnabled()));
        }
    }

    // The lines sent since the last call, all of them to `room`.
    Lines Sent(int room = kRoom) {
        Lines lines;
        for (const SentLine& s : chat.Take()) {
            EXPECT_EQ(s.room, room) << s.text;
            lines.push_back(s.text);
        }
        return lines;
    }

    // The one line just sent is a scramble as long as `answer`, with its hint
    // if any, and `answer` is the one in play.
    void ExpectOnePuzzleFor(const std::string& answer, const std::string& hintPart = "") {
        const Lines lines = Sent();
        ASSERT_EQ(lines.size(), 1u);
        const std::string head = P + "Unscramble: ", line = lines[0];
        ASSERT_EQ(line.rfind(head, 0), 0u) << line;
        ASSERT_EQ(line.size(), head.size() + answer.size() + hintPart.size()) << line;
        EXPECT_EQ(line.substr(head.size() + answer.size()), hintPart) << line;
        ASSERT_TRUE(game.PendingAnswer());
        EXPECT_EQ(*game.PendingAnswer(), answer);
    }
};

TEST_F(GameScenario, PlaysRoundsWithPausesAndIdleTime) {
    Load("Animals", {"giraffe", "zebra,striped", "otter"}, true);

    game.cmdAutoSendOn_Click();
    ExpectOnePuzzleFor("giraffe");

    // Markup and spaces around the answer, any case: credited.
    Say("Some Body", "<font color=\"red\">  GiRaFfe </font>");
    EXPECT_EQ(Sent(), L({"Some Body got it right!!! (giraffe)"}));
    EXPECT_EQ(std::tuple(game.PendingAnswer().has_value(), tmrIdle.IsEnabled(),
                         game.Scores().lstPlayers().Rows()),
              std::tuple(false, false, Lines{"somebody - 1"}));

    // Pause 10: nothing for ten ticks, the next word on the 11th.
    Play({{&tmrMsgPause, 10, "", "", {}}});
    tmrMsgPause.Tick();
    ExpectOnePuzzleFor("zebra", " (Hint: striped)");

    // A wrong line, then a near miss, change nothing.
    // Idle 30: the word is replaced on the 31st tick, its answer unrevealed.
    Play({{nullptr, 0, "ann", "zebras", {}},
          {nullptr, 0, "ann", "zebra!", {}},
          {&tmrIdle, 30, "", "", {}}});
    tmrIdle.Tick();
    ExpectOnePuzzleFor("otter");
}

TEST_F(GameScenario, SkipOnTheLastEntryPostsNothingAndTheIdleTimeGoesOnFromTheTop) {
    Load("Animals", {"giraffe", "zebra", "otter"}, true);
    game.Lists().SetPosition(2);
    game.cmdAutoSendOn_Click();
    ExpectOnePuzzleFor("otter");

    Play({{nullptr, 0, "Boss", "/skip", {}, true}});  // a performed skip starts the pause
    EXPECT_EQ(std::tuple(game.Lists().Position(), game.PendingAnswer().has_value()),
              std::tuple(0, false));
    tmrIdle.Tick(31);
    ExpectOnePuzzleFor("zebra");

    // A skip that is not on the last entry posts the next one at once, with
    // a full idle time of its own.
    tmrIdle.Tick(20);
    tmrCcoms.Tick();
    Say("boss", "/skip");
    ExpectOnePuzzleFor("otter");
    Play({{&tmrIdle, 30, "", "", {}}});

    // With no puzzle pending, "/skip" does nothing and starts no pause.
    game.cmdAnswer_Click();
    Sent();
    Play({{&tmrCcoms, 1, "boss", "/skip", {}, false}});
}

TEST_F(GameScenario, WinsTiesAndEndGameAndTheDisallowedTakePartInNothing) {
    Load("Letters", {"q"}, true);
    commands.Ops().Add("troll");
    commands.Disallows().Add("troll");
    game.ScoreLimit = 3;
    game.cmdAutoSendOn_Click();
    Sent();
    const std::string newGame = "New Game Started! Topic: Letters!";
    Play({{nullptr, 0, "T Roll", "q", {}},
          {nullptr, 0, "troll", "/stop", {}, false},
          {nullptr, 0, "ann", "q", {"ann got it right!!! (q)"}},
          {&tmrMsgPause, 11, "Bob", "q", {"Unscramble: q", "Bob got it right!!! (q)"}},
          {&tmrMsgPause, 11, "ann", "Q", {"Unscramble: q", "ann got it right!!! (q)"}},
          {&tmrMsgPause, 11, "", "", {"Unscramble: q"}}});
    Say("Ann", " q ");
    EXPECT_EQ(Sent(), L({"Ann got it right!!! (q)", "ann is the winner with 3 points!", newGame}));

    game.ScoreLimit = 15;
    Play({{&tmrMsgPause, 11, "", "", {"Unscramble: q"}},
          {nullptr, 0, "ann", "q", {"ann got it right!!! (q)"}},
          {&tmrMsgPause, 11, "bob", "q", {"Unscramble: q", "bob got it right!!! (q)"}},
          {&tmrMsgPause, 11, "", "", {"Unscramble: q"}},
          {&tmrCcoms, 1, "boss", "/new game", {"TIE GAME!!! Winners: ann, bob", newGame}},
          {&tmrMsgPause, 11, "cat", "q", {"Unscramble: q", "cat got it right!!! (q)"}},
          {&tmrMsgPause, 11, "", "", {"Unscramble: q"}},
          {&tmrCcoms, 1, "boss", "/End Game", {"cat is the winner with 1 points!"}}});
    // Over: no game, no timer (no command pause either), no players.
    EXPECT_EQ(std::tuple(game.GameOn, tmrMsgPause.IsEnabled(), tmrIdle.IsEnabled(),
                         tmrCcoms.IsEnabled(), game.Scores().lstPlayers().Empty()),
              std::tuple(false, false, false, false, true));
}

TEST_F(GameScenario, TopicsAreChosenFromTheChatOrByTheTimer) {
    const Lines starWars = {"yoda", "leia", "luke", "han", "rey", "finn"};
    Load("Star Wars", starWars);
    Load("Food", {"bread"}, true);
    Load("Colours", {"red"});
    game.cmdAutoSendOn_Click();
    ExpectOnePuzzleFor("bread");

    Say("boss", "/newtopic");
    EXPECT_EQ(Sent(), L({"Please choose a new topic from this list: Star Wars, Food, Colours."}));
    EXPECT_EQ(
        std::tuple(tmrTopics.IsEnabled(), tmrIdle.IsEnabled(), game.PendingAnswer().has_value()),
        std::tuple(true, false, false));

    // The first line naming a topic takes it and is read no further.
    Play({{&tmrCcoms, 1, "boss", "<b>star wars</b>", {"The Topic 'Star Wars' has been chosen!"}}});
    EXPECT_FALSE(tmrTopics.IsEnabled());
    Lines words = game.Lists().lstWords().Rows();
    EXPECT_NE(words, starWars) << "the chosen topic is shuffled";
    EXPECT_TRUE(std::is_permutation(words.begin(), words.end(), starWars.begin(), starWars.end()));
    tmrMsgPause.Tick(11);
    ExpectOnePuzzleFor(words[0]);

    // As a vote, naming a topic chooses nothing; the timer picks at random.
    game.chkTopicVote = true;
    game.NewTopic(true);
    Sent();
    Play({{nullptr, 0, "ann", "food", {}}});
    tmrTopics.Tick();
    const std::string chosen = game.Lists().CurrentTopic();
    EXPECT_EQ(Sent(),
              L({"No topics were chosen. The topic '" + chosen + "' has been chosen randomly."}));
    EXPECT_EQ(std::tuple(tmrTopics.IsEnabled(), tmrMsgPause.IsEnabled()), std::tuple(false, true));
}

TEST_F(GameScenario, HintAndScoreArePacedAndCaseSensitive) {
    Load("Words", {" elephant "}, true);
    game.cmdAutoSendOn_Click();
    Sent();

    Play({{nullptr, 0, "ann", "/HINT", {}}});
    // The hint keeps the answer's spaces (which letters it hides is the
    // puzzle maker's, tested with it).
    Say("ann", "/hint");
    EXPECT_THAT(Sent(), testing::ElementsAre(testing::MatchesRegex(P + "Hint:  [elphant*]{8} ")));

    Play({{nullptr, 0, "bob", "/hint please", {}},
          {nullptr, 0, "bob", "/score", {}},  // within 10 s of the first
          {&tmrCcom2, 1, "bob", "/score", {"There are no recorded scores yet."}}});
    commands.chkHint = true;  // the hint command switched off
    Play({{&tmrCcom2, 1, "bob", "/hint", {}},
          {nullptr, 0, "carl", "elephant", {"carl got it right!!! (elephant)"}},
          {&tmrCcom2, 1, "carl", "/score", {"<B><U>TOP SCORES</U></B>: carl [1]"}}});
}

TEST_F(GameScenario, OpCommandsArePacedAndMatchedByPrefix) {
    Load("Letters", {"q,a letter"}, true);
    // A second command within ten seconds is ignored; after the pause it runs.
    Play({{nullptr, 0, "Boss", "/help", {ChatCommands::kHelpText}},
          {nullptr, 0, "boss", "/op ann", {}},
          {&tmrCcoms, 1, "boss", "/Op Some Body", {"somebody has been oped."}}});

    // Each line after the pause of the one before.
    FakeTimer* const pause = &tmrCcoms;
    Play({
        {pause, 1, "somebody", "/options", {"tions has been oped."}, true},
        {pause, 1, "boss", "/start", {"Unscramble: q (Hint: a letter)"}, true},
        {pause, 1, "boss", "/answer", {"The answer was (q)!"}, true},
        {pause, 1, "boss", "/stop now", {"Auto-send turned off!"}, true},
        {pause, 1, "ann", "/help", {}, false},  // ann is no op
        // Entities are decoded before the line is read, "&amp;" last (so
        // this line reads "/&lt;b>op ann", no command).
        {pause, 1, "boss", "/&amp;lt;b&gt;op ann", {}, false},
        {pause, 1, "boss", "/&lt;b&gt;op ann", {"ann has been oped."}, true},
    });

    // A correct answer while auto-send is off is credited, and no word follows.
    game.WordSend("q");
    Sent();
    Play({{nullptr, 0, "ann", "q", {"ann got it right!!! (q)"}}});
    EXPECT_FALSE(tmrMsgPause.IsEnabled());
}

TEST_F(GameScenario, ReplyLinesGoToTheRoomOfTheLineAndNewGamesCanChangeTopic) {
    Load("Letters", {"q"}, true);
    game.cmdAutoSendOn_Click();
    Sent();
    Say("ann", "q", 5);
    EXPECT_EQ(Sent(5), L({"ann got it right!!! (q)"}));

    game.chkNewTopic = true;
    game.NewGame();
    EXPECT_EQ(Sent(), L({"ann is the winner with 1 points!",
                         "Please choose a new topic from this list: Letters."}));
    EXPECT_TRUE(tmrTopics.IsEnabled());
    Say("bob", "letters", 5);
    EXPECT_EQ(Sent(5), L({"The Topic 'Letters' has been chosen!"}));
}

// The transcript of a room that talks for hours stays bounded.
TEST(ChatConsole, EmptiesItselfOnceFull) {
    Console console;
    const std::string line(1000, 'x');
    for (int i = 0; i < 66; ++i)
        console.AppendLine(line);
    EXPECT_EQ(console.Text().size(), 66u * 1002u);  // 66132: at the limit, not past it
    console.AppendLine("next");
    EXPECT_EQ(console.Text(), "next\r\n");
}

}  // namespace
}  // namespace game
