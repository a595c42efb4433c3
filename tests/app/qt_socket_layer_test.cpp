// The Qt socket layer over real loopback TCP. (A refused connection:
// server_faults_test.)
#include "app/qt_socket_layer.h"

#include <gtest/gtest.h>

#include <QTcpServer>
#include <QTcpSocket>
#include <vector>

#include "support/qt_wait.h"

namespace {

using testing_support::WaitFor;

// The fixture listens to the layer: what arrived and which elements failed.
class QtSocketLayerTest : public ::testing::Test, public oscar::SocketListener {
  protected:
    QtSocketLayerTest() {
        layer.SetListener(this);
        EXPECT_TRUE(server.listen(QHostAddress::LocalHost));
    }
    void OnDataArrival(int index) override { received[index] += layer.ReadAll(index); }
    void OnSocketError(int index) override { errors.push_back(index); }

    // Connects element `index` and returns the server's end.
    QTcpSocket* ConnectElement(int index, const std::string& host = "127.0.0.1") {
        layer.Create(index);
        layer.Connect(index, host, server.serverPort());
        return WaitFor([&] { return server.hasPendingConnections() && layer.IsConnected(index); })
                   ? server.nextPendingConnection()
                   : nullptr;
    }

    QTcpServer server;
    std::map<int, std::string> received;
    std::vector<int> errors;
    QtSocketLayer layer;  // goes first: its last reports still find the lists above
};

TEST_F(QtSocketLayerTest, OnlyThePeerClosingIsReportedAsAnError) {
    QTcpSocket* peer = ConnectElement(1);
    ASSERT_NE(peer, nullptr);
    layer.Send(1, "bye");
    layer.Close(1);
    EXPECT_FALSE(layer.IsConnected(1));
    // What was written before the close still arrives.
    ASSERT_TRUE(WaitFor([&] { return peer->bytesAvailable() >= 3; }));
    EXPECT_EQ(peer->readAll().toStdString(), "bye");
    // The element can connect again at once, by host name too; the peer
    // closing that connection is an error, reported after the data sent
    // before it.
    QTcpSocket* again = ConnectElement(1, "localhost");
    ASSERT_NE(again, nullptr);
    QCoreApplication::processEvents();
    EXPECT_TRUE(errors.empty());
    again->write("last words");
    again->flush();
    again->disconnectFromHost();
    ASSERT_TRUE(WaitFor([&] { return !errors.empty(); }));
    EXPECT_EQ(errors, std::vector<int>{1});
    EXPECT_EQ(received[1], "last words");
    EXPECT_FALSE(layer.IsConnected(1));

    layer.Destroy(1);
    layer.Send(1, "no element");  // writes nothing, fails nothing
}

}  // namespace
