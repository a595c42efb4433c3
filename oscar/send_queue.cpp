// Writing frames: the sequence numbers, the per-connection send queue that
// keeps every rate class clear of the server's alert level, and the
// keep-alives that keep idle connections open through NAT and proxies.
//
// Queued SNACs go strictly in order: a SNAC waits while any SNAC before it on
// the same connection waits, so no line overtakes another. Sequence numbers
// are given as frames are written, never when they are queued.
#include <algorithm>

#include "oscar/frame_reading.h"
#include "oscar/tolsock.h"

namespace oscar {

namespace {

std::uint16_t Family(std::string_view snac) {
    return ReadWord(snac).value_or(0);
}

std::uint16_t Subtype(std::string_view snac) {
    return snac.size() >= 4 ? ReadWord(snac.substr(2)).value_or(0) : 0;
}

// The SNAC data of a frame, past the optional block that flag 0x8000 announces.
std::string_view SnacBody(std::string_view frame) {
    std::string_view data = From(frame, 17);
    if (!HasOptionalBlock(frame)) return data;
    const std::size_t skip = 2 + ReadWord(data).value_or(0);
    return data.substr(std::min(skip, data.size()));
}

}  // namespace

void TolSock::SetClock(Clock* clock) {
    if (clock_) clock_->CancelWake();
    clock_ = clock;
    wakeAt_.reset();
    if (clock_) Reschedule();
}

void TolSock::SendPacket(int Index, int intChannel, const std::string& strPacket) {
    if (!ValidIndex(Index)) return;
    Connection& c = Conn(Index);
    if (clock_ && intChannel == 2) {
        const std::int64_t now = clock_->NowMs();
        const auto family = Family(strPacket), subtype = Subtype(strPacket);
        if (!c.queue.empty() || c.rates.Wait(family, subtype, now) > 0) {
            c.queue.push_back(strPacket);
            QueueChanged(Index);
            Reschedule();
            return;
        }
        c.rates.Sent(family, subtype, now);
    }
    Write(Index, intChannel, strPacket);
}

void TolSock::Write(int index, int channel, const std::string& payload) {
    Connection& c = Conn(index);
    if (c.seqNum > 0xFFFF) c.seqNum = 0;
    const auto sequence = MakeWord(c.seqNum);
    const auto length = MakeWord(static_cast<long long>(payload.size()));
    // A frame that cannot be built is not written, but its number is used up.
    ++c.seqNum;
    if (!sequence || !length) return;
    sockets_.Send(index, "*" + MakeByte(channel) + *sequence + *length + payload);
    if (!clock_) return;
    c.lastWrite = clock_->NowMs();
    // The keep-alive of this connection is due later than any pending wake-up.
    if (!wakeAt_) Reschedule();
}

void TolSock::ReadRates(int index, const std::string& frame) {
    if (!ValidIndex(index)) return;
    Conn(index).rates.ReadClasses(SnacBody(frame), clock_ ? clock_->NowMs() : 0);
    if (clock_) Reschedule();
}

void TolSock::RateChange(int index, const std::string& frame) {
    if (!ValidIndex(index)) return;
    Conn(index).rates.ReadChange(SnacBody(frame), clock_ ? clock_->NowMs() : 0);
    if (clock_) Reschedule();
}

void TolSock::DropQueue(int index) {
    Connection& c = Conn(index);
    c.rates.Clear();
    c.lastWrite = -1;
    if (c.queue.empty()) return;
    // The connection is gone; what it held cannot go anywhere else.
    c.queue.clear();
    QueueChanged(index);
}

void TolSock::QueueChanged(int index) {
    if (queueObserver_) queueObserver_(index, Conn(index).queue.size());
}

void TolSock::OnClock() {
    wakeAt_.reset();
    if (!clock_) return;
    const std::int64_t now = clock_->NowMs();
    for (int i = 0; i <= kMaxIndex; ++i) {
        Connection& c = Conn(i);
        while (!c.queue.empty()) {
            const std::string& head = c.queue.front();
            const auto family = Family(head), subtype = Subtype(head);
            if (c.rates.Wait(family, subtype, now) > 0) break;
            c.rates.Sent(family, subtype, now);
            const std::string payload = std::move(c.queue.front());
            c.queue.pop_front();
            Write(i, 2, payload);
            QueueChanged(i);
        }
        if (c.lastWrite >= 0 && now - c.lastWrite >= kKeepAliveMs && sockets_.IsConnected(i)) {
            Write(i, 5, "");
        }
    }
    Reschedule();
}

void TolSock::Reschedule() {
    if (!clock_) return;
    const std::int64_t now = clock_->NowMs();
    std::optional<std::int64_t> next;
    const auto consider = [&next](std::int64_t at) { next = next ? std::min(*next, at) : at; };
    for (int i = 0; i <= kMaxIndex; ++i) {
        const Connection& c = Conn(i);
        if (!c.queue.empty()) {
            const std::string& head = c.queue.front();
            consider(now + c.rates.Wait(Family(head), Subtype(head), now));
        }
        if (c.lastWrite >= 0 && sockets_.IsConnected(i)) consider(c.lastWrite + kKeepAliveMs);
    }
    if (!next) {
        if (wakeAt_) clock_->CancelWake();
        wakeAt_.reset();
        return;
    }
    if (wakeAt_ && *wakeAt_ <= *next) return;
    wakeAt_ = *next;
    clock_->WakeAfter(std::max<std::int64_t>(0, *next - now), [this] { OnClock(); });
}

}  // namespace oscar
