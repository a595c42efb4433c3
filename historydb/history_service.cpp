#include "historydb/history_service.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <chrono>

namespace {

history::Millis SystemClock() {
    return std::chrono::duration_cast<std::chrono::milliseconds>(
               std::chrono::system_clock::now().time_since_epoch())
        .count();
}

}  // namespace

HistoryService::HistoryService(std::function<history::Millis()> clock, QObject* parent)
    : QObject(parent), clock_(clock ? std::move(clock) : SystemClock), record_(clock_) {}

HistoryService::~HistoryService() = default;

bool HistoryService::Open(const QString& path) {
    file_.reset();
    record_ = history::History(clock_);
    path_ = path;
    error_.clear();
    file_ = SqlHistory::Open(path, record_, error_);
    emit changed();
    return file_ != nullptr;
}

bool HistoryService::StartFresh(QString& keptAs, QString& error) {
    if (path_.isEmpty()) {
        error = QStringLiteral("There is no history file to start afresh.");
        return false;
    }
    file_.reset();  // closing folds the WAL back into the file
    const QFileInfo info(path_);
    const QString stamp = QDateTime::currentDateTime().toString("yyyyMMdd-HHmmss");
    keptAs = info.dir().filePath(info.completeBaseName() + "-" + stamp + "." + info.suffix());
    for (int n = 2; QFile::exists(keptAs); ++n)
        keptAs = info.dir().filePath(info.completeBaseName() + "-" + stamp + "-" +
                                     QString::number(n) + "." + info.suffix());
    if (QFile::exists(path_) && !QFile::rename(path_, keptAs)) {
        error = QStringLiteral("Cannot rename %1 to %2.").arg(path_, keptAs);
        Open(path_);  // go on with the old file
        return false;
    }
    for (const char* side : {"-wal", "-shm"})
        QFile::remove(path_ + side);
    if (!Open(path_)) {
        error = error_;
        return false;
    }
    return true;
}

bool HistoryService::ExportCsv(const QString& path, QString& error) const {
    return SqlHistory::ExportCsv(record_, path, error);
}

void HistoryService::PuzzlePosted(const std::string& word, const std::string& topic, int mode,
                                  int scoreLimit) {
    record_.PuzzlePosted(word, topic, mode, scoreLimit);
    emit changed();
}

void HistoryService::AnswerCredited(const std::string& screenName) {
    record_.AnswerCredited(screenName);
    emit changed();
}

void HistoryService::GameEnded(const std::vector<std::string>& winnerKeys) {
    record_.GameEnded(winnerKeys);
    emit changed();
}
