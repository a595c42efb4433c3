// Topic files with lines that could never be played: they are skipped when
// the file loads, the rest loads, and the operator learns how many and why.
#include <gtest/gtest.h>

#include "support/bot_fixture.h"

namespace files {
namespace {

using testing_support::BotTest;

class TopicEntryChecksTest : public BotTest {
  protected:
    const std::vector<std::string>& Words(std::size_t topic = 0) {
        return bot.game.Lists().Topics().at(topic).GetAllWords();
    }
};

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
    dialogs.fileAnswers = {folder.Write("mixed.csv", file)};
    dialogs.promptAnswers = {"Mixed"};
    bot.topicFiles.cmdLoadTopic_Click();

    EXPECT_EQ(Words(), (std::vector<std::string>{"cat,a pet", longest, "fish,<i>swims</i>"}));
    EXPECT_EQ(Messages(), std::vector<std::string>{
                              "Note: 5 of 8 lines of topic 'Mixed' could never be played and were "
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
