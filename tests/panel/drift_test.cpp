// Behaviours of the window that had drifted from what the operator is meant
// to see: each case drives the real window and reads what it shows or saves.
#include "support/window_fixture.h"

namespace {

using testing_support::WindowTest;

class DriftTest : public WindowTest {
  protected:
    // Save Settings clicked; the file it wrote.
    QByteArray Save() {
        QTest::mouseClick(window.other->cmdSaveSettings, Qt::LeftButton);
        QFile file(folder.filePath("settings"));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    // Load Settings clicked on a file of these lines.
    void Load(const QByteArray& lines) {
        QFile file(folder.filePath("settings"));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(lines) == lines.size());
        file.close();
        QTest::mouseClick(window.other->cmdLoadSettings, Qt::LeftButton);
    }
};

TEST_F(DriftTest, SaveWritesTheFontBoxesAndALoadNeverClearsACheckedStyleBox) {
    window.ShowPanel(6);
    window.fonts->txtFontType->setText("Arial");
    QTest::keyClick(window.fonts->chkBold, Qt::Key_Space);
    const QByteArray saved = Save();  // no Set Font first
    EXPECT_TRUE(saved.contains("\r\nft:Arial\r\n") && saved.contains("\r\nbold:1\r\n"))
        << saved.toStdString();

    QTest::keyClick(window.fonts->chkItalics, Qt::Key_Space);
    Load("italics:0\r\nbold:0\r\n");
    EXPECT_TRUE(window.fonts->chkItalics->isChecked() && window.fonts->chkBold->isChecked());
    EXPECT_EQ(window.fonts->txtFontType->text(), "Times New Roman") << "the reset's font";
    EXPECT_EQ(bot.game.Style().FontChange(),
              "<html><body bgcolor=\"000000\"><font color=\"00bfff\" face=\"Times New "
              "Roman\"><b><i>");
}

TEST_F(DriftTest, RemovingTheWordInPlayLeavesNoWordInPlay) {
    bot.game.Lists().lstWords().Assign({"ant", "bee", "cat"});
    bot.game.Lists().SetPosition(1);
    ASSERT_EQ(window.scrambleList->lstWords->currentIndex().row(), 1);
    window.scrambleList->mnuScramble->findChild<QAction*>("mnuRemoveScramble")->trigger();
    EXPECT_EQ(bot.game.Lists().lstWords().Rows(), (std::vector<std::string>{"ant", "cat"}));
    EXPECT_EQ(bot.game.Lists().Position(), -1) << "the view's move must not pick 'cat'";
    EXPECT_FALSE(window.scrambleList->lstWords->currentIndex().isValid());
}

TEST_F(DriftTest, FieldChecksRunOnlyWhenTheFocusMovesWithinTheWindow) {
    // The reason the focus left; the questions the check asks.
    const std::pair<Qt::FocusReason, std::size_t> cases[] = {{Qt::ActiveWindowFocusReason, 0},
                                                             {Qt::PopupFocusReason, 0},
                                                             {Qt::TabFocusReason, 1},
                                                             {Qt::MouseFocusReason, 1}};
    for (const auto& [reason, questions] : cases) {
        dialogs.questions.clear();
        window.mainGame->txtSendPause->setText("5");
        QFocusEvent out(QEvent::FocusOut, reason);
        QApplication::sendEvent(window.mainGame->txtSendPause, &out);
        EXPECT_EQ(dialogs.questions.size(), questions) << reason;
    }
}

TEST_F(DriftTest, SignOffIsOfferedFromSignOnUntilSignedOff) {
    EXPECT_FALSE(window.connection->cmdSignOff->isEnabled());
    window.connection->txtSN->setText("Bot Name");
    window.connection->txtPW->setText("secret");
    window.connection->txtPort->setText("1");  // nothing listens; no answer is needed
    QTest::mouseClick(window.connection->cmdSignOn, Qt::LeftButton);
    EXPECT_TRUE(window.connection->cmdSignOff->isEnabled());
    bot.session.LoggedOff();
    EXPECT_FALSE(window.connection->cmdSignOff->isEnabled());
    // A refused sign-on leaves nothing to sign off from either.
    QTest::mouseClick(window.connection->cmdSignOn, Qt::LeftButton);
    bot.session.LoginError("Incorrect nickname or password.", 5);
    EXPECT_FALSE(window.connection->cmdSignOff->isEnabled());
}

TEST_F(DriftTest, ANumberFromTheFileShowsWholeInItsField) {
    Load("idle:12.5\r\nscore:15 points\r\n");
    EXPECT_EQ(std::tuple(window.mainGame->txtIdleTime->text(), bot.game.IdleTime,
                         window.mainGame->txtScoreLimit->text()),
              std::tuple("12.5", 12, "15 points"));
    // Once the operator's edit fits the field again, typing is limited as before.
    window.mainGame->txtIdleTime->setText("12");
    EXPECT_EQ(window.mainGame->txtIdleTime->maxLength(), 3);
}

TEST_F(DriftTest, AnOpListedTwiceIsOneOp) {
    Load("op:alice\r\nop:alice\r\nop:bob\r\n");
    ASSERT_EQ(bot.commands.Ops().Rows().Count(), 3);
    const QByteArray saved = Save();
    EXPECT_TRUE(saved.count("\r\nop:alice\r\n") == 1 && saved.count("\r\nop:bob\r\n") == 1)
        << saved.toStdString();

    bot.commands.Ops().Rows().Select(1);
    window.ops->mnuOp->findChild<QAction*>("mnuRemoveOp")->trigger();
    EXPECT_EQ(bot.commands.Ops().Rows().Rows(), (std::vector<std::string>{"alice", "bob"}))
        << "only the selected row goes";
    EXPECT_FALSE(bot.commands.Ops().Contains("alice"));
    EXPECT_FALSE(Save().contains("op:alice"));
}

}  // namespace
