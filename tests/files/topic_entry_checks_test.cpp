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
                             ",,,\r\n" +          // 4 only commas
                             "   , a hint\r\n" +  // 5 blank answer
                             "\r\n" +             // 6 empty: no entry at all
                             "a\x01"
                             "b\r\n" +                  // 7 control character
                             "<b>dog</b>,bold\r\n" +    // 8 markup in the answer
                             "fish,<i>swims</i>\r\n" +  // 9 markup in the hint is fine
                             std::string("nul\0byte", 8) +
                             "\r\n";  // 10 control character
    dialogs.fileAnswers = {folder.Write("mixed.csv", file)};
    dialogs.promptAnswers = {"Mixed"};
    bot.topicFiles.cmdLoadTopic_Click();

    EXPECT_EQ(Words(), (std::vector<std::string>{"cat,a pet", longest, "fish,<i>swims</i>"}));
    EXPECT_EQ(Messages(), std::vector<std::string>{
                              "Note: 6 of 9 lines of topic 'Mixed' could never be played and were "
                              "skipped: 1 longer than 255 characters, 2 without an answer, 2 with "
                              "control characters, 1 with markup in the answer. The error log "
                              "lists them."});
    const std::string path = folder.File("mixed.csv");
    EXPECT_EQ(
        bot.errors.Rows(),
        (std::vector<std::string>{"Skipped line 3 of '" + path + "': longer than 255 characters.",
                                  "Skipped line 4 of '" + path + "': without an answer.",
                                  "Skipped line 5 of '" + path + "': without an answer.",
                                  "Skipped line 7 of '" + path + "': with control characters.",
                                  "Skipped line 8 of '" + path + "': with markup in the answer.",
                                  "Skipped line 10 of '" + path + "': with control characters."}));
}

}  // namespace
}  // namespace files
