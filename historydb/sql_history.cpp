#include "historydb/sql_history.h"

#include <QFile>
#include <QSqlError>
#include <QSqlRecord>
#include <QVariant>
#include <atomic>
#include <unordered_map>

#include "text/cp1252.h"

namespace {

// Text is the program's 8-bit text; Latin-1 carries each byte through a
// QString unchanged, so what is read back is exactly what was written.
QString Bytes(const std::string& text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}
std::string Bytes(const QVariant& value) {
    return value.toString().toLatin1().toStdString();
}

// Each step takes the file from the version before it to its own number.
const char* const kMigrations[][8] = {
    // 1: the first layout.
    {"CREATE TABLE players(id INTEGER PRIMARY KEY, key TEXT NOT NULL UNIQUE, "
     "name TEXT NOT NULL, first_seen INTEGER NOT NULL)",
     "CREATE TABLE games(id INTEGER PRIMARY KEY, started INTEGER NOT NULL, ended INTEGER, "
     "topic TEXT NOT NULL, score_limit INTEGER NOT NULL)",
     "CREATE TABLE game_winners(game_id INTEGER NOT NULL REFERENCES games(id), "
     "player_id INTEGER NOT NULL REFERENCES players(id), PRIMARY KEY(game_id, player_id))",
     "CREATE TABLE puzzles(id INTEGER PRIMARY KEY, game_id INTEGER NOT NULL REFERENCES "
     "games(id), posted INTEGER NOT NULL, word TEXT NOT NULL, topic TEXT NOT NULL, "
     "mode INTEGER NOT NULL)",
     "CREATE TABLE answers(puzzle_id INTEGER PRIMARY KEY REFERENCES puzzles(id), "
     "player_id INTEGER NOT NULL REFERENCES players(id), answered INTEGER NOT NULL, "
     "seconds REAL NOT NULL)",
     "CREATE INDEX answers_player ON answers(player_id)",
     "CREATE INDEX puzzles_posted ON puzzles(posted)", nullptr},
};
static_assert(std::size(kMigrations) == SqlHistory::kSchemaVersion);

QString Describe(const QSqlError& error) {
    return error.text().isEmpty() ? QStringLiteral("unknown database error") : error.text();
}

}  // namespace

SqlHistory::SqlHistory(QString path, QString connection, history::History& record)
    : path_(std::move(path)), connection_(std::move(connection)), record_(record) {}

SqlHistory::~SqlHistory() {
    record_.SetWriter(nullptr);
    insertGame_.reset();
    insertPuzzle_.reset();
    insertAnswer_.reset();
    insertPlayer_.reset();
    endGame_.reset();
    insertWinner_.reset();
    if (db_.isOpen()) db_.close();
    db_ = QSqlDatabase();
    QSqlDatabase::removeDatabase(connection_);
}

std::unique_ptr<SqlHistory> SqlHistory::Open(const QString& path, history::History& record,
                                             QString& error) {
    static std::atomic<int> serial{0};
    const QString connection = QStringLiteral("history-%1").arg(serial++);
    std::unique_ptr<SqlHistory> store(new SqlHistory(path, connection, record));
    store->db_ = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
    store->db_.setDatabaseName(path);
    if (!store->db_.open()) {
        error = QStringLiteral("Cannot open the history file %1: %2")
                    .arg(path, Describe(store->db_.lastError()));
        return nullptr;
    }
    QSqlQuery pragma(store->db_);
    // WAL: a kill never leaves a half-written file; NORMAL: a commit survives
    // the program's death, and only the operating system's could lose one.
    if (!pragma.exec(QStringLiteral("PRAGMA journal_mode=WAL")) ||
        !pragma.exec(QStringLiteral("PRAGMA synchronous=NORMAL")) ||
        !pragma.exec(QStringLiteral("PRAGMA foreign_keys=ON"))) {
        error = QStringLiteral("The history file %1 is not a database this program can use: %2")
                    .arg(path, Describe(pragma.lastError()));
        return nullptr;
    }
    if (!store->Migrate(error) || !store->Restore(error) || !store->Prepare(error)) return nullptr;
    record.SetWriter(store.get());
    return store;
}

bool SqlHistory::Migrate(QString& error) {
    QSqlQuery query(db_);
    if (!query.exec(QStringLiteral("PRAGMA user_version")) || !query.next()) {
        error = QStringLiteral("The history file %1 is not a database this program can use: %2")
                    .arg(path_, Describe(query.lastError()));
        return false;
    }
    const int version = query.value(0).toInt();
    query.finish();
    if (version > kSchemaVersion) {
        error = QStringLiteral(
                    "The history file %1 was written by a newer version of the program "
                    "(layout %2; this one knows up to %3). It was left untouched.")
                    .arg(path_)
                    .arg(version)
                    .arg(kSchemaVersion);
        return false;
    }
    for (int to = version + 1; to <= kSchemaVersion; ++to) {
        db_.transaction();
        bool ok = true;
        for (const char* const* step = kMigrations[to - 1]; ok && *step; ++step)
            ok = query.exec(QString::fromLatin1(*step));
        ok = ok && query.exec(QStringLiteral("PRAGMA user_version=%1").arg(to));
        if (!ok || !db_.commit()) {
            error = QStringLiteral("Cannot bring the history file %1 to layout %2: %3")
                        .arg(path_)
                        .arg(to)
                        .arg(Describe(query.lastError()));
            db_.rollback();
            return false;
        }
    }
    return true;
}

bool SqlHistory::Restore(QString& error) {
    QSqlQuery query(db_);
    query.setForwardOnly(true);
    auto failed = [&] {
        error = QStringLiteral("Cannot read the history file %1: %2")
                    .arg(path_, Describe(query.lastError()));
        return false;
    };
    std::unordered_map<qint64, int> players, games;
    if (!query.exec(QStringLiteral("SELECT id, key, name, first_seen FROM players ORDER BY id")))
        return failed();
    while (query.next()) {
        const int index = record_.RestorePlayer(
            {Bytes(query.value(1)), Bytes(query.value(2)), query.value(3).toLongLong()});
        players.emplace(query.value(0).toLongLong(), index);
        if (index == static_cast<int>(playerIds_.size()))
            playerIds_.push_back(query.value(0).toLongLong());
    }
    if (!query.exec(
            QStringLiteral("SELECT id, started, ended, topic, score_limit FROM games ORDER BY id")))
        return failed();
    while (query.next()) {
        history::GameRecord game;
        game.started = query.value(1).toLongLong();
        game.ended = query.value(2).isNull() ? 0 : query.value(2).toLongLong();
        game.topic = Bytes(query.value(3));
        game.scoreLimit = query.value(4).toInt();
        games.emplace(query.value(0).toLongLong(), record_.RestoreGame(std::move(game)));
        gameIds_.push_back(query.value(0).toLongLong());
    }
    if (!query.exec(QStringLiteral("SELECT game_id, player_id FROM game_winners"))) return failed();
    std::vector<std::pair<int, int>> winners;
    while (query.next()) {
        const auto game = games.find(query.value(0).toLongLong());
        const auto player = players.find(query.value(1).toLongLong());
        if (game != games.end() && player != players.end())
            winners.emplace_back(game->second, player->second);
    }
    for (auto [game, player] : winners)
        record_.RestoreWinner(game, player);
    if (!query.exec(QStringLiteral(
            "SELECT p.id, p.game_id, p.posted, p.word, p.topic, p.mode, a.player_id, a.answered "
            "FROM puzzles p LEFT JOIN answers a ON a.puzzle_id = p.id ORDER BY p.id")))
        return failed();
    while (query.next()) {
        const auto game = games.find(query.value(1).toLongLong());
        if (game == games.end()) continue;
        int winner = -1;
        if (!query.value(6).isNull()) {
            const auto player = players.find(query.value(6).toLongLong());
            if (player != players.end()) winner = player->second;
        }
        record_.RestorePuzzle(query.value(2).toLongLong(), game->second, Bytes(query.value(3)),
                              Bytes(query.value(4)), query.value(5).toInt(), winner,
                              winner < 0 ? 0 : query.value(7).toLongLong());
        puzzleIds_.push_back(query.value(0).toLongLong());
    }
    return true;
}

bool SqlHistory::Prepare(QString& error) {
    auto prepare = [this, &error](std::unique_ptr<QSqlQuery>& query, const char* sql) {
        query = std::make_unique<QSqlQuery>(db_);
        if (query->prepare(QString::fromLatin1(sql))) return true;
        error = QStringLiteral("Cannot use the history file %1: %2")
                    .arg(path_, Describe(query->lastError()));
        return false;
    };
    return prepare(insertGame_,
                   "INSERT INTO games(started, ended, topic, score_limit) VALUES(?, NULL, ?, ?)") &&
           prepare(
               insertPuzzle_,
               "INSERT INTO puzzles(game_id, posted, word, topic, mode) VALUES(?, ?, ?, ?, ?)") &&
           prepare(insertAnswer_,
                   "INSERT INTO answers(puzzle_id, player_id, answered, seconds) "
                   "VALUES(?, ?, ?, ?)") &&
           prepare(insertPlayer_, "INSERT INTO players(key, name, first_seen) VALUES(?, ?, ?)") &&
           prepare(endGame_, "UPDATE games SET ended = ? WHERE id = ?") &&
           prepare(insertWinner_,
                   "INSERT OR IGNORE INTO game_winners(game_id, player_id) VALUES(?, ?)");
}

bool SqlHistory::Run(QSqlQuery& query) {
    if (query.exec()) return true;
    lastError_ = Describe(query.lastError());
    return false;
}

qint64 SqlHistory::InsertPlayer(const history::PlayerRecord& player) {
    insertPlayer_->bindValue(0, Bytes(player.key));
    insertPlayer_->bindValue(1, Bytes(player.name));
    insertPlayer_->bindValue(2, QVariant::fromValue<qint64>(player.firstSeen));
    const qint64 id = Run(*insertPlayer_) ? insertPlayer_->lastInsertId().toLongLong() : -1;
    playerIds_.push_back(id);
    return id;
}

void SqlHistory::GameStarted(int, const history::GameRecord& record) {
    insertGame_->bindValue(0, QVariant::fromValue<qint64>(record.started));
    insertGame_->bindValue(1, Bytes(record.topic));
    insertGame_->bindValue(2, record.scoreLimit);
    gameIds_.push_back(Run(*insertGame_) ? insertGame_->lastInsertId().toLongLong() : -1);
}

void SqlHistory::PuzzlePosted(int, const history::PuzzleRecord& record, const std::string& word,
                              const std::string& topic) {
    insertPuzzle_->bindValue(0, gameIds_.at(static_cast<std::size_t>(record.game)));
    insertPuzzle_->bindValue(1, QVariant::fromValue<qint64>(record.posted));
    insertPuzzle_->bindValue(2, Bytes(word));
    insertPuzzle_->bindValue(3, Bytes(topic));
    insertPuzzle_->bindValue(4, record.mode);
    puzzleIds_.push_back(Run(*insertPuzzle_) ? insertPuzzle_->lastInsertId().toLongLong() : -1);
}

void SqlHistory::AnswerCredited(int puzzle, const history::PuzzleRecord& record,
                                const history::PlayerRecord* newPlayer) {
    // A new player and the answer go in together, so the answer never names
    // a player the file lacks.
    db_.transaction();
    if (newPlayer) InsertPlayer(*newPlayer);
    insertAnswer_->bindValue(0, puzzleIds_.at(static_cast<std::size_t>(puzzle)));
    insertAnswer_->bindValue(1, playerIds_.at(static_cast<std::size_t>(record.winner)));
    insertAnswer_->bindValue(2, QVariant::fromValue<qint64>(record.answered));
    insertAnswer_->bindValue(3, static_cast<double>(record.answered - record.posted) / 1000.0);
    Run(*insertAnswer_);
    if (!db_.commit()) lastError_ = Describe(db_.lastError());
}

void SqlHistory::GameEnded(int game, const history::GameRecord& record,
                           const std::vector<int>& newPlayers) {
    db_.transaction();
    for (int player : newPlayers)
        InsertPlayer(record_.Players()[static_cast<std::size_t>(player)]);
    const qint64 id = gameIds_.at(static_cast<std::size_t>(game));
    endGame_->bindValue(0, QVariant::fromValue<qint64>(record.ended));
    endGame_->bindValue(1, id);
    Run(*endGame_);
    for (int player : record.winners) {
        insertWinner_->bindValue(0, id);
        insertWinner_->bindValue(1, playerIds_.at(static_cast<std::size_t>(player)));
        Run(*insertWinner_);
    }
    if (!db_.commit()) lastError_ = Describe(db_.lastError());
}

namespace {

QByteArray CsvField(const std::string& text) {
    QByteArray field = QByteArray::fromStdString(text::Utf8FromCp1252(text));
    if (field.contains(',') || field.contains('"') || field.contains('\n') ||
        field.contains('\r')) {
        field.replace("\"", "\"\"");
        field = '"' + field + '"';
    }
    return field;
}

}  // namespace

bool SqlHistory::ExportCsv(const history::History& record, const QString& path, QString& error) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        error = QStringLiteral("Cannot write %1: %2").arg(path, file.errorString());
        return false;
    }
    file.write(
        "game,game_started,game_ended,score_limit,posted,topic,mode,word,player,seconds\r\n");
    for (const history::PuzzleRecord& p : record.Puzzles()) {
        const history::GameRecord& g = record.Games()[static_cast<std::size_t>(p.game)];
        QByteArray row = QByteArray::number(p.game + 1) + ',' + QByteArray::number(g.started) +
                         ',' + (g.ended ? QByteArray::number(g.ended) : QByteArray()) + ',' +
                         QByteArray::number(g.scoreLimit) + ',' + QByteArray::number(p.posted) +
                         ',' + CsvField(record.Topics()[static_cast<std::size_t>(p.topic)]) + ',' +
                         QByteArray::number(p.mode) + ',' +
                         CsvField(record.Words()[static_cast<std::size_t>(p.word)]) + ',';
        if (p.winner >= 0)
            row += CsvField(record.Players()[static_cast<std::size_t>(p.winner)].name) + ',' +
                   QByteArray::number(static_cast<double>(p.answered - p.posted) / 1000.0);
        else
            row += ',';
        file.write(row + "\r\n");
    }
    if (!file.flush()) {
        error = QStringLiteral("Cannot write %1: %2").arg(path, file.errorString());
        return false;
    }
    return true;
}
