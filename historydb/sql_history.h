// The record of past games kept in a SQLite file through Qt SQL. Every event
// is written as it happens, each in its own transaction, with the file in WAL
// mode: a crash or a kill loses at most the write in flight and leaves the
// file whole. On opening, the file is brought to the current layout and read
// back into the in-memory record that the standings are computed from.
#pragma once

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>
#include <memory>
#include <vector>

#include "history/history.h"

class SqlHistory : public history::HistoryWriter {
  public:
    // The layout this program writes; older files are migrated on opening.
    static constexpr int kSchemaVersion = 1;

    // Opens (or creates) `path`, migrates it, restores its contents into the
    // empty `record` and starts writing `record`'s new events to it. Null
    // with `error` set when the file cannot be used.
    static std::unique_ptr<SqlHistory> Open(const QString& path, history::History& record,
                                            QString& error);
    ~SqlHistory() override;
    SqlHistory(const SqlHistory&) = delete;
    SqlHistory& operator=(const SqlHistory&) = delete;

    QString Path() const { return path_; }
    // The last write that failed, if any; the game goes on without it.
    QString LastError() const { return lastError_; }

    // The whole history as CSV (one row per puzzle, with its game and the
    // credited player); false with `error` set when the file cannot be made.
    static bool ExportCsv(const history::History& record, const QString& path, QString& error);

    void GameStarted(int game, const history::GameRecord& record) override;
    void PuzzlePosted(int puzzle, const history::PuzzleRecord& record, const std::string& word,
                      const std::string& topic) override;
    void AnswerCredited(int puzzle, const history::PuzzleRecord& record,
                        const history::PlayerRecord* newPlayer) override;
    void GameEnded(int game, const history::GameRecord& record,
                   const std::vector<int>& newPlayers) override;

  private:
    SqlHistory(QString path, QString connection, history::History& record);
    bool Migrate(QString& error);
    bool Restore(QString& error);
    bool Prepare(QString& error);
    qint64 InsertPlayer(const history::PlayerRecord& player);
    bool Run(QSqlQuery& query);

    QString path_;
    QString connection_;
    history::History& record_;
    QSqlDatabase db_;
    // Row ids of the record's games, puzzles and players, by index.
    std::vector<qint64> gameIds_, puzzleIds_, playerIds_;
    std::unique_ptr<QSqlQuery> insertGame_, insertPuzzle_, insertAnswer_, insertPlayer_, endGame_,
        insertWinner_;
    QString lastError_;
};
