// The history's SQLite file: what is written comes back the same after
// reopening, and a writer killed at random moments never corrupts the file nor loses an
// answer it had credited.
#include <gtest/gtest.h>

#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>
#include <QVariant>

#include "historydb/sql_history.h"

namespace {

using history::History;
using history::Millis;

struct Opened {
    Millis now = 1'700'000'000'000;
    History record{[this] { return now; }};
    std::unique_ptr<SqlHistory> file;
    QString error;
    explicit Opened(const QString& path) { file = SqlHistory::Open(path, record, error); }
};

QVariant Scalar(const QString& path, const QString& sql) {
    QVariant value;
    {
        auto db = QSqlDatabase::addDatabase("QSQLITE", "check");
        db.setDatabaseName(path);
        db.open();  // when it fails, so does the query
        QSqlQuery query(sql, db);
        if (query.next()) value = query.value(0);
    }
    QSqlDatabase::removeDatabase("check");
    return value;
}

TEST(SqlHistory, WhatWasRecordedComesBackAfterReopening) {
    QTemporaryDir dir;
    const QString path = dir.filePath("history.sqlite");
    {
        Opened a(path);
        ASSERT_TRUE(a.file) << a.error.toStdString();
        a.record.PuzzlePosted("caf\xE9", "Food, hot", 1, 3);
        a.now += 2500;
        a.record.AnswerCredited("Ann \xC0gram");
        a.record.PuzzlePosted("tea", "Food, hot", 0, 3);  // skipped
        a.record.GameEnded({"ann\xE0gram", "zed"});       // zed: entered by hand
        a.record.PuzzlePosted("jam", "Food, hot", 2, 3);  // a game left open
    }
    Opened b(path);
    ASSERT_TRUE(b.file) << b.error.toStdString();
    const History& r = b.record;
    EXPECT_EQ(
        std::tuple(r.Words(), r.Puzzles().at(0).answered - r.Puzzles()[0].posted,
                   r.Puzzles().at(1).winner, r.Players().at(0).name),
        std::tuple(std::vector<std::string>{"caf\xE9", "tea", "jam"}, 2500, -1, "Ann \xC0gram"));
    // Zed won too; the second game is still open.
    EXPECT_EQ(std::tuple(r.Games().size(), r.Games().at(0).winners, r.Games().at(1).ended),
              std::tuple(2u, std::vector<int>{0, 1}, 0));
}

TEST(SqlHistory, RefusesFilesItCannotUseAndLeavesThemAlone) {
    QTemporaryDir dir;
    const QString junk = dir.filePath("junk.sqlite");
    QFile f(junk);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly) && f.write(QByteArray(4096, 'x')) == 4096 &&
                f.flush());
    EXPECT_FALSE(Opened(junk).file);

    const QString newer = dir.filePath("newer.sqlite");
    ASSERT_TRUE(Opened(newer).file);
    Scalar(newer, "PRAGMA user_version=99");
    EXPECT_FALSE(Opened(newer).file);
    EXPECT_EQ(Scalar(newer, "PRAGMA user_version").toInt(), 99);
}

TEST(SqlHistory, AKillAtAnyMomentKeepsTheFileWholeAndEveryCreditedAnswer) {
    QTemporaryDir dir;
    const QString path = dir.filePath("history.sqlite");
    long lastCount = 0;
    for (int round = 0; round < 8; ++round) {
        QProcess writer;
        writer.start(HISTORY_CRASH_WRITER, {path});
        ASSERT_TRUE(writer.waitForReadyRead(10000)) << writer.readAllStandardError().toStdString();
        // Let it play for a random moment, then kill it without warning.
        writer.waitForFinished(static_cast<int>(QRandomGenerator::global()->bounded(5, 300)));
        writer.kill();
        ASSERT_TRUE(writer.waitForFinished(10000));
        // Its last line, "credited N".
        const long credited =
            lastCount + writer.readAllStandardOutput().trimmed().split('\n').last().mid(9).toLong();
        ASSERT_GT(credited, lastCount) << "round " << round;

        Opened check(path);
        ASSERT_TRUE(check.file) << "round " << round << ": " << check.error.toStdString();
        const long inFile = std::ranges::count_if(check.record.Puzzles(),
                                                  [](const auto& p) { return p.winner >= 0; });
        // Every answer it reported is there; at most the one in flight more.
        EXPECT_TRUE(inFile == credited || inFile == credited + 1)
            << "round " << round << ": " << inFile << " in the file, " << credited << " reported";
        EXPECT_EQ(Scalar(path, "PRAGMA integrity_check").toString(), "ok") << "round " << round;
        lastCount = inFile;
    }
}

}  // namespace
