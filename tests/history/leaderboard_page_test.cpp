// The leaderboard page in a real browser: headless Chromium, driven over its
// DevTools pipe, opens the page the program serves, shows the standings with
// a hostile name as plain text, and shows a credit as it happens, without a
// reload.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTcpSocket>
#include <QTemporaryDir>

#include "app/child_process.h"
#include "app/leaderboard_server.h"
#include "support/qt_wait.h"

namespace {

constexpr const char* kChromium = "/usr/bin/chromium";

// Chromium with its DevTools protocol on two pipes: commands go in on its
// fd 3, replies and events come out on its fd 4, each message ending in NUL.
class Browser {
  public:
    explicit Browser(const QString& profile) {
        int toChrome[2], fromChrome[2];
        if (pipe(toChrome) != 0 || pipe(fromChrome) != 0) return;
        const int parent = getpid();
        pid_ = fork();
        if (pid_ == 0) {
            EndWithParent(parent);
            dup2(toChrome[0], 3);
            dup2(fromChrome[1], 4);
            dup2(open("/dev/null", O_WRONLY), 2);  // its log says nothing about the page
            const QByteArray dir = "--user-data-dir=" + profile.toLocal8Bit();
            execl(kChromium, kChromium, "--headless", "--no-sandbox", "--disable-gpu",
                  "--disable-quic", "--no-first-run", "--disable-background-networking",
                  "--disable-component-update", "--disable-sync", "--disable-dev-shm-usage",
                  "--remote-debugging-pipe", dir.constData(), "about:blank",
                  static_cast<char*>(nullptr));
            _exit(127);
        }
        close(toChrome[0]);
        close(fromChrome[1]);
        out_ = toChrome[1];
        in_ = fromChrome[0];
        fcntl(in_, F_SETFL, O_NONBLOCK);
    }
    ~Browser() {
        close(out_);
        close(in_);
        if (pid_ <= 0) return;
        // SIGTERM lets it end its own helper processes; SIGKILL if it hangs.
        kill(pid_, SIGTERM);
        if (!testing_support::WaitFor([this] { return waitpid(pid_, nullptr, WNOHANG) != 0; }))
            kill(pid_, SIGKILL);
        waitpid(pid_, nullptr, 0);  // reaps it after SIGKILL; at once otherwise
    }

    // Sends a command, to the page once `session` is set, and waits for its
    // reply, running the event loop (the page's server is in this process); an
    // empty object on timeout.
    QJsonObject Call(const QString& method, const QJsonObject& params = {}, int timeoutMs = 20000) {
        QJsonObject command{{"id", ++id_}, {"method", method}, {"params", params}};
        if (!session.isEmpty()) command["sessionId"] = session;
        const QByteArray bytes = QJsonDocument(command).toJson(QJsonDocument::Compact) + '\0';
        if (write(out_, bytes.constData(), static_cast<size_t>(bytes.size())) != bytes.size())
            return {};
        QJsonObject reply;  // never empty once it comes: it holds the id
        const auto replied = [&] {
            char chunk[65536];
            for (ssize_t n; (n = read(in_, chunk, sizeof chunk)) > 0;)
                buffer_.append(chunk, n);
            for (qsizetype end; reply.isEmpty() && (end = buffer_.indexOf('\0')) >= 0;) {
                const QJsonObject message = QJsonDocument::fromJson(buffer_.left(end)).object();
                buffer_.remove(0, end + 1);
                if (message.value("id").toInt() == id_) reply = message;
            }
            return !reply.isEmpty();
        };
        testing_support::WaitFor(replied, timeoutMs);
        return reply.value("result").toObject();
    }

    QString Evaluate(const QString& js) {
        const auto reply = Call("Runtime.evaluate", {{"expression", js}, {"returnByValue", true}});
        return reply.value("result")["value"].toVariant().toString();
    }

    // Evaluates until `expression` gives true, for at most `timeoutMs`.
    bool WaitFor(const QString& expression, int timeoutMs) {
        return testing_support::WaitFor([&] { return Evaluate(expression) == "true"; }, timeoutMs);
    }

    QString session;  // the page's, once attached

  private:
    pid_t pid_ = -1;
    int out_ = -1, in_ = -1, id_ = 0;
    QByteArray buffer_;
};

TEST(LeaderboardPage, LoadsShowsNamesAsTextAndFollowsTheGameLive) {
    if (!QFile::exists(kChromium)) GTEST_SKIP() << "Chromium is not installed";
    QTemporaryDir dir;
    HistoryService service;
    ASSERT_TRUE(service.Open(dir.filePath("history.sqlite")));
    service.PuzzlePosted("giraffe", "Animals", 0, 15);
    service.AnswerCredited("<script>alert(1)</script>");
    leaderboard::LiveGame live;
    LeaderboardServer server(service, [&live] { return live; });
    QString error;
    ASSERT_TRUE(server.Listen(QHostAddress::LocalHost, 0, error)) << error.toStdString();

    Browser browser(dir.filePath("profile"));
    const QString url = QStringLiteral("http://127.0.0.1:%1/").arg(server.Port());
    const QString target =
        browser.Call("Target.createTarget", {{"url", url}}, 60000)["targetId"].toString();
    ASSERT_FALSE(target.isEmpty()) << "Chromium did not open the page";
    browser.session =
        browser
            .Call("Target.attachToTarget", {{"targetId", target}, {"flatten", true}})["sessionId"]
            .toString();

    // The standings, with the hostile name shown as its own text (elements
    // with an id are globals of the page).
    const QString hostile = "standings.innerText.includes('<script>alert(1)</script>')";
    ASSERT_TRUE(browser.WaitFor("document.readyState === 'complete' && " + hostile, 30000))
        << browser.Evaluate("document.body ? document.body.innerHTML : ''").toStdString();
    ASSERT_TRUE(testing_support::WaitFor([&] { return server.OpenStreams() == 1; }, 20000));

    // A puzzle is posted and a player credited for it: the page's own
    // script redraws the standings, the hostile name still as text.
    service.PuzzlePosted("zebra", "Animals", 0, 15);
    live.scores = {{"bob", 1}};
    service.AnswerCredited("Bob");
    EXPECT_TRUE(browser.WaitFor(
        "scores.innerText.includes('bob: 1') && standings.innerText.includes('Bob') && " + hostile,
        5000));
}

// What no browser sends: each odd or hostile request gets its status, not a
// hang or a crash.
TEST(LeaderboardServer, RefusesWhatItDoesNotServe) {
    QTemporaryDir dir;
    HistoryService service;
    ASSERT_TRUE(service.Open(dir.filePath("history.sqlite")));
    LeaderboardServer server(service, [] { return leaderboard::LiveGame{}; });
    QString error;
    ASSERT_TRUE(server.Listen(QHostAddress::LocalHost, 0, error)) << error.toStdString();
    const std::pair<QByteArray, QByteArray> cases[] = {
        {"GET /api/standings?topic=Nope HTTP/1.1\r\n\r\n", "HTTP/1.1 404"},
        {"GET /etc/passwd HTTP/1.1\r\n\r\n", "HTTP/1.1 404"},
        {"POST / HTTP/1.1\r\n\r\n", "HTTP/1.1 405"},
        {"nonsense\r\n\r\n", "HTTP/1.1 400"},
        {"GET /" + QByteArray(9000, 'a'), "HTTP/1.1 431"}};
    for (const auto& [request, status] : cases) {
        QTcpSocket socket;
        socket.connectToHost(QHostAddress::LocalHost, server.Port());
        socket.write(request);
        QByteArray reply;
        testing_support::WaitFor([&] {
            reply += socket.readAll();
            return socket.state() == QAbstractSocket::UnconnectedState;
        });
        EXPECT_TRUE(reply.startsWith(status))
            << request.left(40).toStdString() << " -> " << reply.left(60).toStdString();
    }
}

}  // namespace
