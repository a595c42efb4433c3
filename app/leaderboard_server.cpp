#include "app/leaderboard_server.h"

#include <QUrl>
#include <QUrlQuery>

#include "panel/cp1252.h"

namespace {

// A request head longer than this is refused; nothing this server answers
// needs more.
constexpr qsizetype kMaxHead = 8192;
constexpr std::size_t kMaxStreams = 64;
constexpr int kRequestMs = 10000;

QByteArray Bytes(const std::string& text) {
    return QByteArray(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

LeaderboardServer::LeaderboardServer(HistoryService& service,
                                     std::function<leaderboard::LiveGame()> live, QObject* parent)
    : QObject(parent), service_(service), live_(std::move(live)) {
    connect(&server_, &QTcpServer::newConnection, this, &LeaderboardServer::Accept);
    pushSoon_.setSingleShot(true);
    pushSoon_.setInterval(20);
    connect(&pushSoon_, &QTimer::timeout, this, &LeaderboardServer::PushLive);
    connect(&service_, &HistoryService::changed, this, [this] { pushSoon_.start(); });
    keepAlive_.setInterval(15000);
    connect(&keepAlive_, &QTimer::timeout, this, [this] {
        for (const auto& s : streams_)
            if (s) s->write(": keep-alive\n\n");
    });
    keepAlive_.start();
}

LeaderboardServer::~LeaderboardServer() = default;

bool LeaderboardServer::Listen(const QHostAddress& address, quint16 port, QString& error) {
    if (server_.listen(address, port)) return true;
    error = QStringLiteral("The leaderboard page cannot listen on %1 port %2: %3")
                .arg(address.toString())
                .arg(port)
                .arg(server_.errorString());
    return false;
}

void LeaderboardServer::Accept() {
    while (QTcpSocket* socket = server_.nextPendingConnection()) {
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { Read(socket); });
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        // A peer that never finishes its request does not hold a connection
        // for ever.
        QTimer::singleShot(kRequestMs, socket, [socket] {
            if (!socket->property("answered").toBool()) socket->abort();
        });
    }
}

void LeaderboardServer::Read(QTcpSocket* socket) {
    QByteArray head = socket->property("head").toByteArray() + socket->readAll();
    if (socket->property("answered").toBool()) return;  // one request per connection
    const qsizetype end = head.indexOf("\r\n\r\n");
    if (end < 0) {
        if (head.size() > kMaxHead) {
            Reply(socket, "431 Request Header Fields Too Large", "text/plain", "Too large.\n");
            return;
        }
        socket->setProperty("head", head);
        return;
    }
    socket->setProperty("answered", true);
    socket->setProperty("head", QVariant());
    const QList<QByteArray> request = head.left(head.indexOf("\r\n")).split(' ');
    if (request.size() != 3 || !request[2].startsWith("HTTP/1.")) {
        Reply(socket, "400 Bad Request", "text/plain", "Bad request.\n");
        return;
    }
    Answer(socket, request[0], request[1]);
}

void LeaderboardServer::Answer(QTcpSocket* socket, const QByteArray& method,
                               const QByteArray& target) {
    if (method != "GET") {
        Reply(socket, "405 Method Not Allowed", "text/plain", "Only GET.\n");
        return;
    }
    const QUrl url(QStringLiteral("http://host") + QString::fromLatin1(target));
    const QUrlQuery query(url);
    const QString path = url.path();
    const history::History& record = service_.Record();
    const history::Millis now = record.Now();
    const QByteArray json = "application/json; charset=utf-8";
    if (path == "/") {
        Reply(socket, "200 OK", "text/html; charset=utf-8", Bytes(leaderboard::Page(record, now)));
    } else if (path == "/api/standings") {
        const auto period = leaderboard::ParsePeriod(query.queryItemValue("period").toStdString());
        std::optional<int> topic;
        if (query.hasQueryItem("topic")) {
            topic = record.FindTopic(ToCp1252(query.queryItemValue("topic", QUrl::FullyDecoded)));
            if (!topic) {
                Reply(socket, "404 Not Found", json, "{\"error\":\"no such topic\"}");
                return;
            }
        }
        Reply(socket, "200 OK", json,
              Bytes(leaderboard::StandingsJson(record, period.value_or(history::Period::ThisWeek),
                                               topic, now)));
    } else if (path == "/api/player") {
        Reply(socket, "200 OK", json,
              Bytes(leaderboard::PlayerJson(
                  record, ToCp1252(query.queryItemValue("name", QUrl::FullyDecoded)), now)));
    } else if (path == "/api/games") {
        Reply(socket, "200 OK", json, Bytes(leaderboard::GamesJson(record, 20)));
    } else if (path == "/api/live") {
        Reply(socket, "200 OK", json, Bytes(leaderboard::LiveJson(live_())));
    } else if (path == "/events") {
        std::erase_if(streams_, [](const QPointer<QTcpSocket>& s) { return !s; });
        if (streams_.size() >= kMaxStreams) {
            Reply(socket, "503 Service Unavailable", "text/plain", "Too many pages open.\n");
            return;
        }
        socket->write(
            "HTTP/1.1 200 OK\r\nContent-Type: text/event-stream\r\nCache-Control: no-cache\r\n"
            "Connection: keep-alive\r\nX-Content-Type-Options: nosniff\r\n\r\n");
        socket->write("data: " + Bytes(leaderboard::LiveJson(live_())) + "\n\n");
        streams_.push_back(socket);
    } else {
        Reply(socket, "404 Not Found", "text/plain", "Not found.\n");
    }
}

void LeaderboardServer::Reply(QTcpSocket* socket, const QByteArray& status, const QByteArray& type,
                              const QByteArray& body) {
    socket->write("HTTP/1.1 " + status + "\r\nContent-Type: " + type +
                  "\r\nContent-Length: " + QByteArray::number(body.size()) +
                  "\r\nCache-Control: no-store\r\nX-Content-Type-Options: nosniff\r\n"
                  "Content-Security-Policy: default-src 'self'; script-src 'unsafe-inline'; "
                  "style-src 'unsafe-inline'\r\nConnection: close\r\n\r\n" +
                  body);
    socket->disconnectFromHost();
}

int LeaderboardServer::OpenStreams() const {
    int open = 0;
    for (const auto& s : streams_)
        open += s && s->state() == QAbstractSocket::ConnectedState;
    return open;
}

void LeaderboardServer::PushLive() {
    const QByteArray event = "data: " + Bytes(leaderboard::LiveJson(live_())) + "\n\n";
    std::erase_if(streams_, [](const QPointer<QTcpSocket>& s) {
        return !s || s->state() != QAbstractSocket::ConnectedState;
    });
    for (const auto& s : streams_)
        s->write(event);
}
