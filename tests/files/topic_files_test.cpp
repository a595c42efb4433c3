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

}  // namespace
}  // namespace files
