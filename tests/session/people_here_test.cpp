// The people of a room as arrivals and departures come in: the list shown
// follows the room name by name, and matches a plain model of the room.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

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
    shown.SetObserver(nullptr);
}

TEST_F(PeopleHereTest, ManyArrivalsAndDeparturesMatchAPlainList) {
    std::mt19937 random(7);
    std::vector<std::string> model;
    for (int step = 0; step < 3000; ++step) {
        const std::string name = "p" + std::to_string(random() % 400);
        // Departures outweigh arrivals in the second half, so the list
        // grows, then empties and packs its left-over slots.
        const bool join = random() % 100 < (step < 1500 ? 70u : 25u);
        const auto at = std::find(model.begin(), model.end(), name);
        if (join) {
            bot.session.UserJoinedChat(2, name);
            if (at == model.end()) model.push_back(name);
        } else {
            bot.session.UserLeftChat(2, name);
            if (at != model.end()) model.erase(at);
        }
        ASSERT_EQ(shown.Count(), static_cast<int>(model.size())) << step;
        if (step % 100 == 0 || model.size() < 3) {
            ASSERT_EQ(shown.Rows(), model) << step;
            ASSERT_EQ(bot.client.Chat()[0].PeopleHere.Names(), model) << step;
            for (std::size_t row = 0; row < model.size(); ++row)
                ASSERT_EQ(shown.At(static_cast<int>(row)), model[row]) << step;
        }
    }
}

}  // namespace
}  // namespace session
