#include "oscar/encoding.h"

#include <array>
#include <cmath>

namespace oscar {

namespace {

int HexDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

// Reads the TLVs of `data` from its start, at most `limit` of them, and
// returns how many bytes they took up.
std::size_t ReadTLVs(std::string_view data, int limit, TLVList& list) {
    std::size_t pos = 0;
    for (int read = 0; read < limit && pos < data.size(); ++read) {
        std::string_view rest = data.substr(pos);
        list.emplace_back(rest.substr(0, 2));
        if (rest.size() < 4) {
            // No length field: the type is all there is.
            list.emplace_back();
            return data.size();
        }
        const std::size_t length = *ReadWord(rest.substr(2));
        list.emplace_back(rest.substr(4, length));
        pos += std::min(rest.size(), length + 4);
    }
    return pos;
}

}  // namespace

std::string HexToBytes(std::string_view hex) {
    std::string bytes;
    bytes.reserve(hex.size() / 2 + 1);
    for (std::size_t i = 0; i < hex.size(); i += 2) {
        const int high = HexDigit(hex[i]);
        if (i + 1 == hex.size()) {
            if (high >= 0) bytes.push_back(static_cast<char>(high));
            break;
        }
        const int low = HexDigit(hex[i + 1]);
        if (high >= 0 && low >= 0) bytes.push_back(static_cast<char>(high * 16 + low));
    }
    return bytes;
}

std::string BytesToHex(std::string_view bytes) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    std::string hex;
    hex.reserve(bytes.size() * 2);
    for (unsigned char b : bytes) {
        hex.push_back(kDigits[b >> 4]);
        hex.push_back(kDigits[b & 0x0F]);
    }
    return hex;
}

std::string MakeByte(long long value) {
    if (value < 0 || value > 255) return {};
    return std::string(1, static_cast<char>(value));
}

std::optional<std::string> MakeWord(long long value) {
    if (value < 0 || value > 0xFFFF) return std::nullopt;
    return Word(static_cast<std::uint16_t>(value));
}

std::optional<std::string> MakeDWord(double value) {
    if (!std::isfinite(value) || value < 0 || value >= 4294967296.0) return std::nullopt;
    return DWord(static_cast<std::uint32_t>(value));
}

std::string Word(std::uint16_t value) {
    return {static_cast<char>(value >> 8), static_cast<char>(value & 0xFF)};
}

std::string DWord(std::uint32_t value) {
    return Word(static_cast<std::uint16_t>(value >> 16)) +
           Word(static_cast<std::uint16_t>(value & 0xFFFF));
}

std::optional<std::uint16_t> ReadWord(std::string_view bytes) {
    if (bytes.size() < 2) return std::nullopt;
    return static_cast<std::uint16_t>(static_cast<unsigned char>(bytes[0]) << 8 |
                                      static_cast<unsigned char>(bytes[1]));
}

std::optional<std::uint32_t> ReadDWord(std::string_view bytes) {
    if (bytes.size() < 4) return std::nullopt;
    return static_cast<std::uint32_t>(*ReadWord(bytes)) << 16 | *ReadWord(bytes.substr(2));
}

std::string SnacKey(std::string_view bytes) {
    return BytesToHex(bytes.substr(0, 2)) +
           BytesToHex(bytes.substr(std::min<std::size_t>(2, bytes.size()), 2));
}

std::string MakeTLV(std::string_view typeHex, int width, std::string_view value) {
    std::string length;
    switch (width) {
        case 1:
            length = MakeByte(static_cast<long long>(value.size()));
            if (length.empty()) return {};
            break;
        case 2: {
            auto word = MakeWord(static_cast<long long>(value.size()));
            if (!word) return {};
            length = *word;
            break;
        }
        case 4: {
            auto dword = MakeDWord(static_cast<double>(value.size()));
            if (!dword) return {};
            length = *dword;
            break;
        }
        default:
            return {};
    }
    std::string tlv = HexToBytes(typeHex);
    tlv += length;
    tlv += value;
    return tlv;
}

void ParseTLVs(std::string& data, TLVList& list) {
    data.erase(0, ReadTLVs(data, kMaxTLVsPerCall, list));
}

void ParseTLVsCounted(std::string& data, int count, TLVList& list) {
    data.erase(0, ReadTLVs(data, std::min(count, kMaxTLVsPerCall), list));
}

std::optional<std::string> FindTLV(const TLVList& list, std::string_view type) {
    for (std::size_t i = 0; i + 1 < list.size(); i += 2) {
        if (list[i] == type) return list[i + 1];
    }
    return std::nullopt;
}

std::string FamilyName(std::string_view family) {
    struct Entry {
        const char* hex;
        const char* name;
    };
    static constexpr std::array<Entry, 26> kNames{{
        {"0001", "[Generic]"},
        {"0002", "[Location]"},
        {"0003", "[Buddy_List]"},
        {"0004", "[ICBM_Messages]"},
        {"0005", "[Depreciated(advertisments)]"},
        {"0006", "[Invitation]"},
        {"0007", "[Admin]"},
        {"0008", "[Popup]"},
        {"0009", "[Privacy]"},
        {"000A", "[User_Lookup]"},
        {"000B", "[Stats]"},
        {"000C", "[Depricated(translation)]"},
        {"000D", "[Chat_Navigation]"},
        {"000E", "[Chat]"},
        {"000F", "[Directory_Search]"},
        {"0010", "[Buddy_Icons]"},
        {"0011", "[Unknown[0011]]"},
        {"0012", "[Unknown[0012]]"},
        {"0013", "[SSI]"},
        {"0014", "[Unknown[0014]]"},
        {"0015", "[ICQ_Meta]"},
        {"0016", "[Unknown[0016]]"},
        {"0017", "[Authorization]"},
        {"0018", "[Email]"},
        {"0019", "[Unknown[0019]]"},
        {"00A0", "[Unknown[00A0]]"},
    }};
    const std::string hex = BytesToHex(family);
    for (const Entry& e : kNames) {
        if (hex == e.hex) return e.name;
    }
    return "Unknown[" + hex + "]";
}

}  // namespace oscar
