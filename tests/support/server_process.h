// What the soak and fault runs share: the local server as a child process
// that ends with this one, and the bot's sockets noting every chat line they
// write, so that each line the server reports the room received can be
// checked against the lines the bot sent.
#pragma once

#include <QCoreApplication>
#include <QProcess>
#include <QStringList>
#include <algorithm>
#include <cstdio>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "app/child_process.h"
#include "app/qt_socket_layer.h"
#include "oscar/encoding.h"
#include "support/qt_wait.h"

namespace testing_support {

// The value after `name` on the command line, or `fallback`.
inline QString Option(const QStringList& args, const QString& name, const QString& fallback) {
    const auto at = args.indexOf(name);
    return at >= 0 && at + 1 < args.size() ? args[at + 1] : fallback;
}

inline qint64 Percentile(std::vector<qint64> values, double p) {
    if (values.empty()) return 0;
    std::sort(values.begin(), values.end());
    return values[static_cast<std::size_t>(p * static_cast<double>(values.size() - 1))];
}

// The program's sockets, noting the text of every chat line written.
class RecordingSockets : public QtSocketLayer {
  public:
    void Send(int index, const std::string& bytes) override {
        if (IsConnected(index) && bytes.size() > 26 &&
            oscar::SnacKey(bytes.substr(6)) == "000E0005") {
            std::string data = bytes.substr(26), block;
            oscar::TLVList tlvs, parts;
            oscar::ParseTLVs(data, tlvs);
            block = oscar::FindTLV(tlvs, oscar::HexToBytes("0005")).value_or("");
            oscar::ParseTLVs(block, parts);
            sent.push_back(oscar::FindTLV(parts, oscar::HexToBytes("0001")).value_or(""));
        }
        QtSocketLayer::Send(index, bytes);
    }

    // A line the room received. The lines sent before it that are still
    // waiting never arrived, or arrive out of order: they count as lost. A
    // line not waiting at all (said twice, altered, never sent) is
    // unexpected, and Received returns false for it.
    bool Received(const std::string& text) {
        ++received;
        const auto at = std::find(sent.begin(), sent.end(), text);
        if (at == sent.end()) {
            ++unexpected;
            return false;
        }
        lost.insert(lost.end(), sent.begin(), at);
        sent.erase(sent.begin(), at + 1);
        return true;
    }
    // Every line sent reached the room once and in order, and some did.
    bool AllArrived() const {
        return received > 0 && lost.empty() && unexpected == 0 && sent.empty();
    }
    std::string Summary() const {
        return "Lines received in the room: " + std::to_string(received) +
               "; lost: " + std::to_string(lost.size()) +
               ", said twice, altered or unknown: " + std::to_string(unexpected) +
               ", never seen: " + std::to_string(sent.size());
    }

    std::deque<std::string> sent;  // waiting to be seen in the room
    std::vector<std::string> lost;
    std::size_t received = 0, unexpected = 0;
};

// The local server program, ended with this one even when this one is
// killed. The lines the room received from the bot go to `sockets` and then,
// when expected, to `onBotLine`; the server's other lines go to `onLine`.
class ServerProcess {
  public:
    explicit ServerProcess(RecordingSockets& sockets) : sockets_(sockets) {
        process.setProgram(QStringLiteral(LOCAL_SERVER_PROGRAM));
        const int parent = static_cast<int>(QCoreApplication::applicationPid());
        process.setChildProcessModifier([parent] { EndWithParent(parent); });
        QObject::connect(&process, &QProcess::readyReadStandardOutput, [this] { ReadLines(); });
    }
    // Starts the server with `args` on `onPort` (0: any free port).
    void Start(const QStringList& args, int onPort = 0) {
        pending_.clear();
        process.setArguments(QStringList{"--port", QString::number(onPort), "--report"} + args);
        process.start();
    }
    // Waits (ten seconds at most) until the server names its port.
    bool Listening() {
        if (WaitFor([&] { return port != 0; }, 10000)) return true;
        std::fprintf(stderr, "The server did not start: %s\n",
                     process.errorString().toLocal8Bit().constData());
        return false;
    }
    // Terminated, the server signs everyone off first; killed, it just goes.
    void Stop(bool abruptly = false) {
        if (process.state() == QProcess::NotRunning) return;
        abruptly ? process.kill() : process.terminate();
        process.waitForFinished(5000);
    }

    QProcess process;
    int port = 0;
    std::function<void(const std::string&)> onBotLine;
    std::function<void(const QByteArray&)> onLine;

  private:
    void ReadLines() {
        pending_ += process.readAllStandardOutput();
        for (int end; (end = pending_.indexOf('\n')) >= 0;) {
            const QByteArray line = pending_.left(end);
            pending_.remove(0, end + 1);
            if (line.startsWith("Local OSCAR server on 127.0.0.1:")) {
                port = line.mid(line.lastIndexOf(':') + 1).toInt();
            } else if (line.startsWith("BOT ")) {
                const std::string text = oscar::HexToBytes(line.mid(4).toStdString());
                if (sockets_.Received(text) && onBotLine) onBotLine(text);
            } else if (onLine) {
                onLine(line);
            }
        }
    }

    RecordingSockets& sockets_;
    QByteArray pending_;
};

}  // namespace testing_support
