#include "app/qt_socket_layer.h"

#include <QTcpSocket>

QtSocketLayer::QtSocketLayer(QObject* parent) : QObject(parent) {
    Create(0);
}

QtSocketLayer::~QtSocketLayer() {
    listener_ = nullptr;
    for (auto& [index, element] : elements_) {
        element.socket->disconnect(this);
        element.socket->abort();
    }
}

void QtSocketLayer::Create(int index) {
    if (elements_.count(index)) return;
    auto* socket = new QTcpSocket(this);
    // Notifications carry the element's index; they look it up when they
    // fire, so an element destroyed in between is simply not there.
    // Chat lines are small and should go at once, not wait to be batched.
    connect(socket, &QTcpSocket::connected, socket,
            [socket] { socket->setSocketOption(QAbstractSocket::LowDelayOption, 1); });
    connect(socket, &QTcpSocket::readyRead, this, [this, index] {
        if (listener_ && Exists(index)) listener_->OnDataArrival(index);
    });
    // The peer closing the connection counts as losing it, as any other
    // error does; closing it from this side raises nothing.
    connect(socket, &QTcpSocket::errorOccurred, this, [this, index, socket] {
        if (listener_ && SocketAt(index) == socket) listener_->OnSocketError(index);
    });
    elements_[index].socket = socket;
}

void QtSocketLayer::Destroy(int index) {
    auto it = elements_.find(index);
    if (it == elements_.end()) return;
    if (index == 0) {
        Close(0);
        return;
    }
    QTcpSocket* socket = it->second.socket;
    elements_.erase(it);
    socket->disconnect(this);
    socket->abort();
    // It may be the very socket whose notification is running.
    socket->deleteLater();
}

bool QtSocketLayer::Exists(int index) const {
    return elements_.count(index) > 0;
}

QTcpSocket* QtSocketLayer::SocketAt(int index) const {
    auto it = elements_.find(index);
    return it == elements_.end() ? nullptr : it->second.socket;
}

void QtSocketLayer::Connect(int index, const std::string& host, int port) {
    QTcpSocket* socket = SocketAt(index);
    if (!socket) return;
    socket->abort();
    socket->connectToHost(QString::fromStdString(host), static_cast<quint16>(port));
}

void QtSocketLayer::Send(int index, const std::string& bytes) {
    QTcpSocket* socket = SocketAt(index);
    if (!socket || socket->state() != QAbstractSocket::ConnectedState) return;
    socket->write(bytes.data(), static_cast<qint64>(bytes.size()));
}

std::string QtSocketLayer::ReadAll(int index) {
    QTcpSocket* socket = SocketAt(index);
    if (!socket) return {};
    return socket->readAll().toStdString();
}

void QtSocketLayer::Close(int index) {
    QTcpSocket* socket = SocketAt(index);
    if (!socket) return;
    // What was written goes out first; the socket is free again at once.
    if (socket->state() == QAbstractSocket::ConnectedState) socket->flush();
    socket->abort();
}

bool QtSocketLayer::IsConnected(int index) const {
    QTcpSocket* socket = SocketAt(index);
    return socket && socket->state() == QAbstractSocket::ConnectedState;
}

std::string QtSocketLayer::ErrorText(int index) const {
    QTcpSocket* socket = SocketAt(index);
    return socket ? socket->errorString().toStdString() : std::string();
}

std::string QtSocketLayer::Tag(int index) const {
    auto it = elements_.find(index);
    return it == elements_.end() ? std::string() : it->second.tag;
}

void QtSocketLayer::SetTag(int index, const std::string& tag) {
    auto it = elements_.find(index);
    if (it != elements_.end()) it->second.tag = tag;
}
