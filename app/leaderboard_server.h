// The leaderboard page and its JSON API, served by the program itself over
// HTTP/1.1 on a QTcpServer: "/" the page, "/api/standings?period=&topic=",
// "/api/player?name=", "/api/games", "/api/live", and "/events", a stream of
// server-sent events that carries the game in progress after every puzzle,
// credit and game end, so an open page follows the game without reloading.
#pragma once

#include <QHostAddress>
#include <QObject>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <functional>
#include <vector>

#include "historydb/history_service.h"
#include "leaderboard/leaderboard.h"

class LeaderboardServer : public QObject {
    Q_OBJECT

  public:
    // The address and port it listens on unless the operator names others.
    static constexpr const char* kDefaultAddress = "127.0.0.1";
    static constexpr quint16 kDefaultPort = 8190;

    LeaderboardServer(HistoryService& service, std::function<leaderboard::LiveGame()> live,
                      QObject* parent = nullptr);
    ~LeaderboardServer() override;

    // Port 0 takes any free port. False with `error` set when it cannot listen.
    bool Listen(const QHostAddress& address, quint16 port, QString& error);
    quint16 Port() const { return server_.serverPort(); }
    // Pages following the game right now.
    int OpenStreams() const;

    // Sends the game in progress to every open page now.
    void PushLive();

  private:
    void Accept();
    void Read(QTcpSocket* socket);
    void Answer(QTcpSocket* socket, const QByteArray& method, const QByteArray& target);
    static void Reply(QTcpSocket* socket, const QByteArray& status, const QByteArray& type,
                      const QByteArray& body);

    HistoryService& service_;
    std::function<leaderboard::LiveGame()> live_;
    QTcpServer server_;
    std::vector<QPointer<QTcpSocket>> streams_;
    QTimer pushSoon_;   // a burst of events makes one push
    QTimer keepAlive_;  // a comment now and then keeps idle streams open
};
