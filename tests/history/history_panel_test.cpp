// The Standings tab and panel, and the Other panel's history controls, driven
// through the window's controls over a real history file.
#include <QDir>
#include <QFile>
#include <QHeaderView>

#include "panel/history_panel.h"
#include "support/window_fixture.h"

namespace {

class HistoryWindow : public testing_support::WindowTest {
  protected:
    HistoryWindow() {
        EXPECT_TRUE(service.Open(path)) << service.Error().toStdString();
        panel = AttachHistory(window, service, dialogs, bot.errors);
    }

    void Play(const std::string& word, const std::string& who, history::Millis took) {
        service.PuzzlePosted(word, "Animals", 0, 15);
        now += took;
        if (!who.empty()) service.AnswerCredited(who);
    }

    QStringList Column(int column) const {
        QStringList cells;
        for (int row = 0; row < panel->model->rowCount(); ++row)
            cells << panel->model->index(row, column).data().toString();
        return cells;
    }

    // Tuesday 9 January 2024, noon UTC: the same week in every time zone.
    history::Millis now = 1704801600000;
    HistoryService service{[this] { return now; }};
    QString path = QDir(folder.path()).filePath("history.sqlite");
    StandingsPanel* panel = nullptr;
};

TEST_F(HistoryWindow, CtrlEqualsShowsTheStandingsAsASortableTable) {
    // From the keyboard: Ctrl+= shows it, Ctrl+1 takes it away again.
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(&window, Qt::Key_Equal, Qt::ControlModifier);
    EXPECT_TRUE(panel->isVisible());
    QTest::keyClick(&window, Qt::Key_1, Qt::ControlModifier);
    EXPECT_FALSE(panel->isVisible());

    Play("yak", "Bob", 900);
    Play("emu", "Ann Agram", 3000);
    Play("ibis", "ann agram", 2000);
    panel->Refresh();
    EXPECT_EQ(Column(1), (QStringList{"Ann Agram", "Bob"}));
    // A click on "Fastest (s)" sorts by it.
    panel->grdStandings->horizontalHeader()->setSortIndicator(4, Qt::AscendingOrder);
    EXPECT_EQ(Column(1), (QStringList{"Bob", "Ann Agram"}));
}

TEST_F(HistoryWindow, TheOtherPanelExportsTheHistoryAndStartsAFreshOneKeepingTheOld) {
    Play("yak", "Bob", 1500);
    // Windows-1252 curly quotes: UTF-8 in the file.
    Play("emu, \x93tall\x94 bird", "", 0);

    const QString csv = QDir(folder.path()).filePath("out.csv");
    dialogs.fileAnswers.push_back(csv.toStdString());
    QTest::mouseClick(window.other->findChild<QPushButton*>("cmdExportHistory"), Qt::LeftButton);
    QFile file(csv);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(),
              "game,game_started,game_ended,score_limit,posted,topic,mode,word,player,seconds\r\n"
              "1,1704801600000,,15,1704801600000,Animals,0,yak,Bob,1.5\r\n"
              "1,1704801600000,,15,1704801601500,Animals,0,\"emu, \xE2\x80\x9Ctall\xE2\x80\x9D "
              "bird\",,\r\n");

    // Asked first; the old games stay in a file of their own.
    for (const bool yes : {false, true}) {
        dialogs.yesNoAnswers.push_back(yes);
        QTest::mouseClick(window.other->findChild<QPushButton*>("cmdFreshHistory"), Qt::LeftButton);
        EXPECT_EQ(service.Record().Puzzles().size(), yes ? 0u : 2u);
    }
    const QStringList kept = QDir(folder.path()).entryList({"history-*.sqlite"}, QDir::Files);
    ASSERT_EQ(kept.size(), 1) << kept.join(",").toStdString();
    HistoryService old;
    ASSERT_TRUE(old.Open(QDir(folder.path()).filePath(kept[0])));
    EXPECT_EQ(old.Record().Puzzles().size(), 2u);
}

}  // namespace
