// The client's sockets on QTcpSocket: one per index, element 0 always there.
#pragma once

#include <QObject>
#include <map>
#include <memory>
#include <string>

#include "oscar/socket_layer.h"

class QTcpSocket;

class QtSocketLayer : public QObject, public oscar::SocketLayer {
    Q_OBJECT

  public:
    explicit QtSocketLayer(QObject* parent = nullptr);
    ~QtSocketLayer() override;

    void SetListener(oscar::SocketListener* listener) override { listener_ = listener; }
    void Create(int index) override;
    void Destroy(int index) override;
    bool Exists(int index) const override;
    void Connect(int index, const std::string& host, int port) override;
    void Send(int index, const std::string& bytes) override;
    std::string ReadAll(int index) override;
    void Close(int index) override;
    bool IsConnected(int index) const override;
    std::string ErrorText(int index) const override;
    std::string Tag(int index) const override;
    void SetTag(int index, const std::string& tag) override;

  private:
    struct Element {
        QTcpSocket* socket = nullptr;
        std::string tag;
    };

    QTcpSocket* SocketAt(int index) const;

    std::map<int, Element> elements_;
    oscar::SocketListener* listener_ = nullptr;
};
