// The main window driven through its controls.
#include "panel/topic_picker.h"

#include "support/window_fixture.h"

namespace {

using testing_support::WindowTest;

TEST_F(WindowTest, TimingFieldsAreCheckedWhenLeft) {
    MainGamePanel& g = *window.mainGame;
    dialogs.yesNoAnswers = {true, false};
    tmrIdle.Enable();
    // Field, text typed, text shown after, the game's value after.
    const std::tuple<QLineEdit*, const char*, const char*, const int&, int> cases[] = {
        {g.txtSendPause, "5", "5", bot.game.SendPause, 5},       // below 10: Yes keeps it
        {g.txtSendPause, "5", "10", bot.game.SendPause, 5},      // No: the field is reset only
        {g.txtSendPause, "9.5", "9.5", bot.game.SendPause, 10},  // above 9: no question
        {g.txtScoreLimit, "abc", "15", bot.game.ScoreLimit, 15},
        {g.txtIdleTime, "-1", "10", bot.game.IdleTime, 30},
        {g.txtIdleTime, "10", "10", bot.game.IdleTime, 10}};
    for (const auto& [field, typed, shown, value, expected] : cases) {
        SCOPED_TRACE(field->objectName().toStdString() + " " + typed);
        LeaveField(field, typed);
        EXPECT_EQ(std::pair(field->text(), value), std::pair(QString(shown), expected));
    }
    EXPECT_EQ(dialogs.questions.size(), 2u);
    EXPECT_EQ(tmrIdle.starts, 2) << "a running idle timer starts a fresh interval";
    EXPECT_EQ(MessageTexts().size(), 2u) << "the bad score limit and idle time";
}

TEST_F(WindowTest, ScrambleListControlsEditTheList) {
    window.scrambleList->txtManualAddWord->setText(" Cat ");
    window.scrambleList->txtManualAddHint->setText(" a pet ");
    QTest::keyClick(window.scrambleList->txtManualAddWord, Qt::Key_Return);
    EXPECT_EQ(bot.game.Lists().lstWords().Rows(), std::vector<std::string>{"Cat,a pet"});
    EXPECT_TRUE(window.scrambleList->txtManualAddWord->text().isEmpty());

    // A selected row in the view is the game's position.
    window.scrambleList->lstWords->setCurrentIndex(
        window.scrambleList->lstWords->model()->index(0, 0));
    EXPECT_EQ(bot.game.Lists().Position(), 0);

    window.ops->txtAddOp->setText(" Alice Smith ");
    QTest::keyClick(window.ops->txtAddOp, Qt::Key_Return);
    EXPECT_TRUE(bot.commands.Ops().Contains("alicesmith"));
    EXPECT_EQ(window.ops->lstOps->model()->index(0, 0).data().toString(), "alicesmith");
}

TEST_F(WindowTest, TopicsLoadIntoTheListFromThePanelAndThePicker) {
    dialogs.fileAnswers = {std::string(TOPICS_DIR) + "/animals.csv"};
    dialogs.promptAnswers = {"animals"};
    QTest::mouseClick(window.chkTab[4], Qt::LeftButton);
    QTest::mouseClick(window.topics->cmdLoadTopic, Qt::LeftButton);
    ASSERT_EQ(window.topics->lstData->model()->rowCount(), 1);
    window.topics->lstData->setCurrentIndex(window.topics->lstData->model()->index(0, 0));
    QTest::mouseClick(window.topics->cmdSendToList, Qt::LeftButton);
    EXPECT_EQ(bot.game.Lists().lstWords().Count(), 20);

    TopicPicker picker(bot);
    picker.Load();
    ASSERT_EQ(picker.lstTopics->count(), 1);
    picker.lstTopics->setCurrentRow(0);
    QTest::mouseClick(picker.cmdAdd, Qt::LeftButton);
    EXPECT_EQ(bot.game.Lists().lstWords().Count(), 40) << "the same topic can be added twice";
    EXPECT_EQ(window.scrambleList->lblCurrentTopic->text(), "animals");
}

}  // namespace
