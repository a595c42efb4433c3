// The leaderboard's HTTP server on loopback: each route, and odd and hostile
// requests answered with a status instead of a hang. The event stream is
// followed by the browser in the page test.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTcpSocket>
#include <QTemporaryDir>

#include "app/leaderboard_server.h"

namespace {

class LeaderboardServerTest : public ::testing::Test {
  protected:
    LeaderboardServerTest() {
        EXPECT_TRUE(service.Open(dir.filePath("history.sqlite")));
        QString error;
        EXPECT_TRUE(server.Listen(QHostAddress::LocalHost, 0, error)) << error.toStdString();
    }

    // Sends `request` and reads until the server closes the connection.
    QByteArray Exchange(const QByteArray& request) {
        socket.connectToHost(QHostAddress::LocalHost, server.Port());
        if (!socket.waitForConnected(5000)) return {};
        socket.write(request);
        QByteArray reply;
        QElapsedTimer clock;
        clock.start();
        while (clock.elapsed() < 5000 && socket.state() != QAbstractSocket::UnconnectedState) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
            reply += socket.readAll();
        }
        return reply + socket.readAll();
    }

    QTemporaryDir dir;
    HistoryService service{[] { return history::Millis{1704801600000}; }};
    leaderboard::LiveGame live{"Unscramble: kay", 9, "Animals", {}};
    LeaderboardServer server{service, [this] { return live; }};
    QTcpSocket socket;
};

TEST_F(LeaderboardServerTest, AnswersEachRouteAndRefusesWhatItDoesNotServe) {
    service.PuzzlePosted("yak", "Animals", 0, 5);
    struct Case {
        QByteArray request, status, bodyPart;
    } cases[] = {
        {"GET / HTTP/1.1\r\nHost: x\r\n\r\n", "HTTP/1.1 200 OK", "<h1>Leaderboard</h1>"},
        {"GET /api/games HTTP/1.1\r\n\r\n", "HTTP/1.1 200 OK", "\"topic\":\"Animals\""},
        {"GET /api/standings?period=all&topic=Animals HTTP/1.1\r\n\r\n", "HTTP/1.1 200 OK",
         "\"period\":\"all\",\"topic\":\"Animals\""},
        {"GET /api/standings?topic=Nope HTTP/1.1\r\n\r\n", "HTTP/1.1 404", "no such topic"},
        {"GET /api/player?name=%3Cb%3E HTTP/1.1\r\n\r\n", "HTTP/1.1 200 OK", "{\"found\":false}"},
        {"GET /api/live HTTP/1.1\r\n\r\n", "HTTP/1.1 200 OK", "\"secondsLeft\":9"},
        {"GET /etc/passwd HTTP/1.1\r\n\r\n", "HTTP/1.1 404", "Not found."},
        {"POST / HTTP/1.1\r\n\r\n", "HTTP/1.1 405", "Only GET."},
        {"nonsense\r\n\r\n", "HTTP/1.1 400", "Bad request."},
        {"GET /" + QByteArray(9000, 'a'), "HTTP/1.1 431", "Too large."},
    };
    for (const Case& c : cases) {
        const QByteArray reply = Exchange(c.request);
        EXPECT_TRUE(reply.startsWith(c.status))
            << c.request.left(60).toStdString() << " -> " << reply.left(80).toStdString();
        EXPECT_TRUE(reply.contains(c.bodyPart)) << c.request.left(60).toStdString();
        socket.abort();
    }
}

}  // namespace
