// Frames as the servers send them, built from their fields, for tests and
// fuzz targets.
#pragma once

#include <string>
#include <vector>

#include "oscar/encoding.h"

namespace testing_support {

// A whole FLAP frame around `payload` (sequence number 0).
inline std::string Frame(int channel, const std::string& payload) {
    return "*" + oscar::MakeByte(channel) + oscar::Word(0) +
           oscar::Word(static_cast<std::uint16_t>(payload.size())) + payload;
}

// A channel-2 frame whose payload is given as hex.
inline std::string SnacFrame(const std::string& hex) {
    return Frame(2, oscar::HexToBytes(hex));
}

inline std::string Greeting() {
    return Frame(1, oscar::HexToBytes("00000001"));
}

// A user record: name length, name, warning level, no TLVs.
inline std::string UserRecord(const std::string& name) {
    return oscar::MakeTLV("", 1, name) + oscar::HexToBytes("00000000");
}

// A chat line said by `sender` as the chat server relays it.
inline std::string ChatLineFrame(const std::string& sender, const std::string& text,
                                 const std::string& charset = "us-ascii") {
    using oscar::HexToBytes;
    using oscar::MakeTLV;
    return Frame(2, HexToBytes("000E000600000000000000000000000000000003") +
                        MakeTLV("0003", 2, UserRecord(sender)) +
                        MakeTLV("0005", 2, MakeTLV("0002", 2, charset) + MakeTLV("0001", 2, text)));
}

// A BOS redirect to the service `familyHex` at `address`, with a cookie
// when one is given.
inline std::string RedirectFrame(const std::string& familyHex, const std::string& address,
                                 const std::string& cookie = "") {
    using oscar::MakeTLV;
    return Frame(2, oscar::HexToBytes("00010005000000000000") +
                        MakeTLV("000D", 2, oscar::HexToBytes(familyHex)) +
                        MakeTLV("0005", 2, address) +
                        (cookie.empty() ? std::string() : MakeTLV("0006", 2, cookie)));
}

// What the servers send on index 0 for a whole sign-on, from the
// authorization greeting to the BOS rights reply.
inline std::vector<std::string> SignOnFrames() {
    using oscar::HexToBytes;
    using oscar::MakeTLV;
    return {Greeting(),
            SnacFrame("0017000700000000000000046B657931"),
            Frame(2, HexToBytes("00170003000000000000") + MakeTLV("0001", 2, "botname") +
                         MakeTLV("0005", 2, "bos.example.net:5191") + MakeTLV("0006", 2, "COOKIE") +
                         MakeTLV("0011", 2, "bot@example.net")),
            Greeting(),
            SnacFrame("0001000300000000000000010002"),
            SnacFrame("0001001800000000000000010004"),
            SnacFrame("000100070000000000000000"),
            SnacFrame("0004000500000000000000020000000B1F4003E703E700000000"),
            SnacFrame("00090003000000000000")};
}

}  // namespace testing_support
