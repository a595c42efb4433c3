// Topic files on real files in a temporary folder.
#include "files/topic_files.h"

#include <gtest/gtest.h>

#include "files/line_file.h"
#include "support/bot_fixture.h"

namespace files {
namespace {

using Lines = std::vector<std::string>;

using testing_support::BotTest;

class TopicFilesTest : public BotTest {
  protected:
    // Loads `path` through the dialog, answering the name prompt with `name`.
    void Load(const std::string& path, const std::string& name) {
        dialogs.fileAnswers = {path};
        dialogs.promptAnswers = {name};
        bot.topicFiles.cmdLoadTopic_Click();
    }
    Lines Names() {
        Lines names;
        for (const auto& t : bot.game.Lists().Topics())
            names.push_back(t.GetTopic());
        return names;
    }
};

TEST(DefaultTopicName, DropsTheLastFourCharactersWhenThePathHasADot) {
    EXPECT_EQ(DefaultTopicName("/lists/animals.csv"), "animals");
    EXPECT_EQ(DefaultTopicName("/lists/list.text"), "list.");
    EXPECT_EQ(DefaultTopicName("/lists/words"), "words");
    EXPECT_EQ(DefaultTopicName("C:\\My.Lists\\words"), "w");
    EXPECT_EQ(DefaultTopicName("/My.Lists/abc"), "");
}

TEST_F(TopicFilesTest, LoadsNonEmptyLinesVerbatim) {
    const std::string path = folder.Write("animals.csv", "cat,A pet\r\n\r\ndog\r\n  \r\n");
    Load(path, "");
    ASSERT_EQ(dialogs.fileRequests.size(), 1u);
    EXPECT_EQ(dialogs.fileRequests[0].title, "Load Scramble List");
    EXPECT_EQ(dialogs.fileRequests[0].filter,
              "Scramble Lists (*.csv)|*.csv|Scramble Lists (*.txt)|*.txt|All files (*.*)|*.*|");
    EXPECT_EQ(dialogs.fileRequests[0].folder, folder.Path());
    ASSERT_EQ(dialogs.prompts.size(), 1u);
    EXPECT_EQ(dialogs.prompts[0].prompt, "Give the topic a name.");
    EXPECT_EQ(dialogs.prompts[0].defaultText, "animals");

    const auto& topics = bot.game.Lists().Topics();
    ASSERT_EQ(topics.size(), 1u);
    // A line of blanks has no answer to play: skipped.
    EXPECT_EQ(topics[0].GetAllWords(), (Lines{"cat,A pet", "dog"}));
    EXPECT_EQ(topics[0].GetDir(), path);
}

TEST_F(TopicFilesTest, NamePromptRefusesDuplicatesBlanksAndColons) {
    Load(folder.Write("a.txt", "ant\r\n"), "Animals");
    Load(folder.Write("f.txt", "fig\r\n"), "Food");
    Load(folder.Write("x.txt", "x\r\n"), " ANI mals");
    Load(folder.Write("y.txt", "y\r\n"), "   ");
    Load(folder.Write("z.txt", "z\r\n"), "a:b");
    dialogs.fileAnswers = {folder.Write("w.txt", "w\r\n")};
    bot.topicFiles.cmdLoadTopic_Click();  // the prompt is cancelled
    EXPECT_EQ(Names(), (Lines{"Animals", "Food", "Topic #3", "Topic #4", "ab", "Topic #6"}));
    EXPECT_EQ(
        Messages(),
        (Lines{"Note: A topic with this name already exists. It has been renamed to Topic #3!",
               "Note: A topic with this name already exists. It has been renamed to Topic #4!",
               "Note: A topic with this name already exists. It has been renamed to Topic #6!"}));
    EXPECT_EQ(bot.game.Lists().lstData().Rows(), Names());
}

TEST_F(TopicFilesTest, MissingFilesAndCancelledDialogsAreHandled) {
    dialogs.fileAnswers = {std::nullopt};
    bot.topicFiles.cmdLoadTopic_Click();
    EXPECT_TRUE(dialogs.messages.empty());
    EXPECT_TRUE(bot.errors.Empty());

    Load(folder.File("gone.txt"), "x");
    Load(folder.Path(), "a folder is no file");
    EXPECT_EQ(Messages(), (Lines{"Error: Failed to load topic!", "Error: Failed to load topic!"}));
    EXPECT_EQ(bot.errors.At(0), "Failed to load topic from directory '" + folder.Path() + "'!");
    EXPECT_TRUE(bot.game.Lists().Topics().empty());
    EXPECT_TRUE(dialogs.prompts.empty()) << "nothing is asked for a file that is not there";

    dialogs.fileAnswers = {std::nullopt};
    bot.game.Lists().lstWords().Append("x");
    bot.topicFiles.cmdSaveList_Click();
    EXPECT_EQ(bot.errors.Count(), 2);
}

TEST_F(TopicFilesTest, LineEndsAndEightBitTextSurvive) {
    std::string high;
    for (int b = 0x80; b <= 0xFF; ++b)
        high.push_back(static_cast<char>(b));
    Load(folder.Write("mixed.txt", "one\rtwo\r\nthree\nfour," + high), "Mixed");
    const auto words = bot.game.Lists().Topics()[0].GetAllWords();
    EXPECT_EQ(words, (Lines{"one", "two", "three", "four," + high}));

    bot.game.Lists().AddTopicList("mixed");
    dialogs.fileAnswers = {folder.File("saved.txt")};
    bot.topicFiles.cmdSaveList_Click();
    EXPECT_EQ(folder.Read("saved.txt"), "one\r\ntwo\r\nthree\r\nfour," + high + "\r\n");
    EXPECT_EQ(dialogs.fileRequests.back().title, "Save Scramble List");

    Load(folder.File("saved.txt"), "Again");
    EXPECT_EQ(bot.game.Lists().Topics()[1].GetAllWords(), words);
}

TEST_F(TopicFilesTest, SavingAnEmptyListIsRefused) {
    bot.topicFiles.cmdSaveList_Click();
    EXPECT_EQ(Messages(), Lines{"Note: There is no list to save!"});
    EXPECT_EQ(bot.errors.Rows(), Lines{"There is no list to save!"});
    EXPECT_TRUE(dialogs.fileRequests.empty());
}

TEST_F(TopicFilesTest, MergesEitherWayRound) {
    for (bool foodFirst : {false, true}) {
        bot.game.Lists().cmdClearAll_Click();
        Load(folder.Write("animals.txt", "ant\r\nbee\r\n"), "Animals");
        Load(folder.Write("food.txt", "fig\r\n"), "Food");
        dialogs.promptAnswers = {foodFirst ? "food" : "ANIMALS", foodFirst ? "Animals" : "food",
                                 "  "};
        bot.topicFiles.cmdMerge_Click();
        const auto& topics = bot.game.Lists().Topics();
        ASSERT_EQ(topics.size(), 1u);
        EXPECT_EQ(topics[0].GetTopic(), foodFirst ? "food" : "ANIMALS");
        EXPECT_EQ(topics[0].GetDir(), folder.File(foodFirst ? "food.txt" : "animals.txt"));
        EXPECT_EQ(topics[0].GetAllWords(),
                  foodFirst ? (Lines{"fig", "ant", "bee"}) : (Lines{"ant", "bee", "fig"}));
        EXPECT_EQ(bot.game.Lists().lstData().Rows(), Lines{topics[0].GetTopic()});
    }
    const auto& prompts = dialogs.prompts;
    EXPECT_EQ(prompts[prompts.size() - 3].defaultText, "Animals");
    EXPECT_EQ(prompts[prompts.size() - 2].defaultText, "Food");
    EXPECT_EQ(prompts.back().defaultText, "food") << "the first answer as typed";
}

TEST_F(TopicFilesTest, MergeRefusals) {
    Load(folder.Write("a.txt", "ant\r\n"), "Animals");
    bot.topicFiles.cmdMerge_Click();
    Load(folder.Write("f.txt", "fig\r\n"), "Food");
    dialogs.promptAnswers = {""};
    bot.topicFiles.cmdMerge_Click();
    dialogs.promptAnswers = {"cars"};
    bot.topicFiles.cmdMerge_Click();
    dialogs.promptAnswers = {"animals", ""};
    bot.topicFiles.cmdMerge_Click();
    dialogs.promptAnswers = {"animals", " Ani Mals"};
    bot.topicFiles.cmdMerge_Click();
    EXPECT_EQ(bot.errors.Rows(), (Lines{"There are not enough topics to merge!",
                                        "You need to enter in a topic name to merge!",
                                        "The topic 'cars' was not found!",
                                        "You need to enter in a second topic name to merge!",
                                        "You cannot merge the same topic!"}));
    EXPECT_EQ(bot.game.Lists().Topics().size(), 2u);
}

TEST_F(TopicFilesTest, AutoLoadTakesTheNameAsGiven) {
    bot.topicFiles.AutoLoadTopic(" My Topic ", folder.Write("t.txt", "a\r\nb\r\n"));
    bot.topicFiles.AutoLoadTopic("Gone", folder.File("gone.txt"));
    bot.topicFiles.AutoLoadTopic(" ", folder.File("t.txt"));
    ASSERT_EQ(bot.game.Lists().Topics().size(), 1u);
    EXPECT_EQ(bot.game.Lists().Topics()[0].GetTopic(), " My Topic ");
    EXPECT_EQ(bot.errors.Rows(), Lines{"Failed to auto load topic 'Gone' from directory '" +
                                       folder.File("gone.txt") + "'!"});
    EXPECT_TRUE(dialogs.messages.empty());
}

}  // namespace
}  // namespace files
