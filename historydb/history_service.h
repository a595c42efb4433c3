// The program's record of past games: the in-memory record, the SQLite file
// it is kept in, and a signal after every event so that the standings panel
// and the leaderboard page follow the game as it is played.
#pragma once

#include <QObject>
#include <QString>
#include <memory>

#include "history/history.h"
#include "historydb/sql_history.h"

class HistoryService : public QObject, public history::HistoryStore {
    Q_OBJECT

  public:
    // The file's name beside the settings file.
    static constexpr const char* kFileName = "history.sqlite";

    explicit HistoryService(std::function<history::Millis()> clock = {}, QObject* parent = nullptr);
    ~HistoryService() override;

    // Opens (or creates) the file; when it cannot be used the record still
    // runs in memory and Error() says why.
    bool Open(const QString& path);
    QString Path() const { return path_; }
    QString Error() const { return error_; }
    bool HasFile() const { return file_ != nullptr; }

    // The record lives as long as the service, across StartFresh.
    const history::History& Record() const { return record_; }

    // Closes the file, renames it aside ("history-YYYYMMDD-HHMMSS.sqlite"),
    // and opens a new empty one. `keptAs` names the old file.
    bool StartFresh(QString& keptAs, QString& error);
    bool ExportCsv(const QString& path, QString& error) const;

    void PuzzlePosted(const std::string& word, const std::string& topic, int mode,
                      int scoreLimit) override;
    void AnswerCredited(const std::string& screenName) override;
    void GameEnded(const std::vector<std::string>& winnerKeys) override;

  signals:
    // After each recorded event, and after the record was replaced.
    void changed();

  private:
    std::function<history::Millis()> clock_;
    history::History record_;
    std::unique_ptr<SqlHistory> file_;
    QString path_;
    QString error_;
};
