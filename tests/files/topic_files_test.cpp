// Topic files on real files in a temporary folder.
#include "files/topic_files.h"

#include <gtest/gtest.h>

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
    const std::vector<game::TopicClass>& topics = bot.game.Lists().Topics();
};

TEST_F(TopicFilesTest, LoadsNonEmptyLinesVerbatimWithAnyLineEnd) {
    std::string high;
    for (int b = 0x80; b <= 0xFF; ++b)
        high.push_back(static_cast<char>(b));
    const std::string path =
        folder.Write("animals.csv", "cat,A pet\r\n\r\ndog\r\n  \r\none\rtwo\nfour," + high);
    Load(path, "Animals");
    EXPECT_EQ(dialogs.prompts.at(0).defaultText, "animals");
    ASSERT_EQ(topics.size(), 1u);
    // A line of blanks has no answer to play: skipped.
    EXPECT_EQ(topics[0].GetAllWords(), (Lines{"cat,A pet", "dog", "one", "two", "four," + high}));
    EXPECT_EQ(topics[0].GetDir(), path);

    // Saved with CR LF, and loaded again the same.
    bot.game.Lists().AddTopicList("animals");
    dialogs.fileAnswers = {folder.File("saved.txt")};
    bot.topicFiles.cmdSaveList_Click();
    EXPECT_EQ(folder.Read("saved.txt"), "cat,A pet\r\ndog\r\none\r\ntwo\r\nfour," + high + "\r\n");
}

TEST_F(TopicFilesTest, NamePromptRefusesDuplicatesBlanksAndColons) {
    Load(folder.Write("a.txt", "ant\r\n"), "Animals");
    Load(folder.Write("f.txt", "fig\r\n"), "Food");
    Load(folder.Write("x.txt", "x\r\n"), " ANI mals");
    Load(folder.Write("z.txt", "z\r\n"), "a:b");
    dialogs.fileAnswers = {folder.Write("w.txt", "w\r\n")};
    bot.topicFiles.cmdLoadTopic_Click();  // the prompt is cancelled
    EXPECT_EQ(Names(), (Lines{"Animals", "Food", "Topic #3", "ab", "Topic #5"}));
    const std::string note = "Note: A topic with this name already exists. It has been renamed to ";
    EXPECT_EQ(Messages(), (Lines{note + "Topic #3!", note + "Topic #5!"}));
    EXPECT_EQ(bot.game.Lists().lstData().Rows(), Names());
}

TEST_F(TopicFilesTest, MissingFilesAndEmptyListsAreReported) {
    Load(folder.File("gone.txt"), "x");
    Load(folder.Path(), "a folder is no file");
    bot.topicFiles.AutoLoadTopic("Gone", folder.File("gone.txt"));
    bot.topicFiles.cmdSaveList_Click();
    EXPECT_EQ(std::tuple(dialogs.messages.size(), bot.errors.Count()), std::tuple(3u, 4));
    // No topic; no name asked for a file that is not there, no file for an empty list.
    EXPECT_EQ(std::tuple(topics.size(), dialogs.prompts.size(), dialogs.fileRequests.size()),
              std::tuple(0u, 0u, 2u));
}

TEST_F(TopicFilesTest, MergeKeepsTheFirstNamedTopicAsTypedAndAppendsTheSecond) {
    Load(folder.Write("animals.txt", "ant\r\nbee\r\n"), "Animals");
    Load(folder.Write("food.txt", "fig\r\n"), "Food");
    dialogs.promptAnswers = {"food", "ANIMALS"};
    bot.topicFiles.cmdMerge_Click();
    ASSERT_EQ(topics.size(), 1u);
    EXPECT_EQ(std::tuple(topics[0].GetTopic(), topics[0].GetDir()),
              std::tuple("food", folder.File("food.txt")));
    EXPECT_EQ(topics[0].GetAllWords(), (Lines{"fig", "ant", "bee"}));
    EXPECT_EQ(bot.game.Lists().lstData().Rows(), Lines{"food"});
}

// Topic files with lines that could never be played: they are skipped when
// the file loads, the rest loads, and the operator learns how many and why.
using TopicEntryChecksTest = TopicFilesTest;

TEST_F(TopicEntryChecksTest, UnplayableLinesAreSkippedAndReported) {
    const std::string longest(255, 'w');
    const std::string file = "cat,a pet\r\n" +    // 1 fine
                             longest + "\r\n" +   // 2 fine, at the limit
                             longest + "x\r\n" +  // 3 too long
                             "   , a hint\r\n" +  // 4 blank answer
                             "\r\n" +             // 5 empty: no entry at all
                             "a\x01"
                             "b\r\n" +                  // 6 control character
                             "<b>dog</b>,bold\r\n" +    // 7 markup in the answer
                             "fish,<i>swims</i>\r\n" +  // 8 markup in the hint is fine
                             std::string("nul\0byte", 8) +
                             "\r\n";  // 9 control character
    Load(folder.Write("mixed.csv", file), "Mixed");
    ASSERT_EQ(topics.size(), 1u);
    EXPECT_EQ(topics[0].GetAllWords(), (Lines{"cat,a pet", longest, "fish,<i>swims</i>"}));
    EXPECT_EQ(Messages(),
              Lines{"Note: 5 of 8 lines of topic 'Mixed' could never be played and were "
                    "skipped: 1 longer than 255 characters, 1 without an answer, 2 with "
                    "control characters, 1 with markup in the answer. The error log "
                    "lists them."});
    // One error line for each, numbered as the file counts its lines.
    ASSERT_EQ(bot.errors.Count(), 5);
    EXPECT_EQ(bot.errors.At(4),
              "Skipped line 9 of '" + folder.File("mixed.csv") + "': with control characters.");
}

}  // namespace
}  // namespace files
