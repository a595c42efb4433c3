// What the client needs of TCP: an array of socket elements addressed by
// index, each with a text tag, connecting later, and notifying data and
// errors with its index. The program uses Qt sockets; tests use a fake.
#pragma once

#include <string>

namespace oscar {

class SocketListener {
  public:
    virtual ~SocketListener() = default;
    // Bytes have arrived on `index`; ReadAll takes them.
    virtual void OnDataArrival(int index) = 0;
    // The connection on `index` failed or was closed by the peer.
    virtual void OnSocketError(int index) = 0;
};

class SocketLayer {
  public:
    virtual ~SocketLayer() = default;

    virtual void SetListener(SocketListener* listener) = 0;

    // Element 0 always exists; others are created and destroyed on demand.
    virtual void Create(int index) = 0;
    // Destroying element 0 only closes it.
    virtual void Destroy(int index) = 0;
    virtual bool Exists(int index) const = 0;

    // Starts connecting to a host name or dotted address; completes later.
    virtual void Connect(int index, const std::string& host, int port) = 0;
    // Writes bytes; a missing or unconnected element writes nothing.
    virtual void Send(int index, const std::string& bytes) = 0;
    // Everything that has arrived and was not read yet.
    virtual std::string ReadAll(int index) = 0;
    virtual void Close(int index) = 0;
    virtual bool IsConnected(int index) const = 0;
    // Why the last connect or connection on `index` failed ("Connection
    // refused", ...); empty when the layer cannot tell.
    virtual std::string ErrorText(int /*index*/) const { return {}; }

    virtual std::string Tag(int index) const = 0;
    virtual void SetTag(int index, const std::string& tag) = 0;
};

}  // namespace oscar
