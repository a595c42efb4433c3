// The people of a room as arrivals and departures come in: the list shown
// follows the room name by name, and matches a plain model of the room.
#include <gtest/gtest.h>

#include "support/bot_fixture.h"

namespace session {
namespace {

using testing_support::BotTest;

// What the view is told, one word a change.
class ViewLog : public game::ListObserver {
  public:
    void RowsAboutToBeInserted(int first, int) override {
        log.push_back("insert " + std::to_string(first));
    }
    void RowsAboutToBeRemoved(int first, int) override {
        log.push_back("remove " + std::to_string(first));
    }
    void AboutToReset() override { log.push_back("reset"); }
    std::vector<std::string> log;
};

class PeopleHereTest : public BotTest {
  protected:
    PeopleHereTest() { testing_support::EnterFakeRoom(sockets, bot.client); }
    PeopleList& shown = bot.session.lstPeopleHere();
};

TEST_F(PeopleHereTest, TheRoomInViewChangesOneRowAtATime) {
    ViewLog view;
    shown.SetObserver(&view);
    for (const char* name : {"Ann Agram", "Bob", "Cat Nap", "ANNAGRAM"})
        bot.session.UserJoinedChat(2, name);
    shown.Select(2);
    bot.session.UserLeftChat(2, "B O B");
    bot.session.UserLeftChat(2, "nobody");
    // The room is shown whole once; after that every name is one row.
    EXPECT_EQ(view.log, (std::vector<std::string>{"reset", "insert 1", "insert 2", "remove 1"}));
    EXPECT_EQ(shown.Rows(), (std::vector<std::string>{"annagram", "catnap"}));
    EXPECT_EQ(shown.Selected(), 1) << "the selection moves up with its row";
    EXPECT_EQ(bot.session.lblPeopleCount(), "2 People Here");
    shown.SetObserver(nullptr);
}

TEST_F(PeopleHereTest, ARoomInTheSamePlaceIsNotTakenForTheOldOne) {
    bot.session.UserJoinedChat(2, "Ann");
    // The rooms vanish without a word (a sign-off), and a new room gets the
    // same connection index.
    bot.client.Chat().clear();
    testing_support::EnterFakeRoom(sockets, bot.client);
    bot.session.UserJoinedChat(2, "Bob");
    EXPECT_EQ(shown.Rows(), std::vector<std::string>{"bob"});
}

}  // namespace
}  // namespace session
