// The byte and hex-text toolbox every packet is built and read with.
//
// A byte string is a std::string holding one byte per char. Fixed packet parts
// are written as hex text and turned into bytes when the packet is built;
// variable parts are appended as bytes. All numbers on the wire are big-endian.
//
// Conversions that can fail return std::optional: a caller that gets nullopt
// skips the step that needed the value and carries on. Nothing here throws.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace oscar {

// Flat list of parsed TLVs: type (2 raw bytes), value, type, value, ...
using TLVList = std::vector<std::string>;

// Two digits per byte, either case. A pair that is not hexadecimal adds no
// byte; a single digit at an odd-length tail is read on its own.
std::string HexToBytes(std::string_view hex);

// Upper case, exactly two digits per byte, no separators.
std::string BytesToHex(std::string_view bytes);

// One byte, or the empty string for a value outside 0..255.
std::string MakeByte(long long value);

// Two bytes big-endian; nullopt outside 0..65535.
std::optional<std::string> MakeWord(long long value);

// Four bytes big-endian; nullopt outside 0..4294967295 (fractions are dropped).
std::optional<std::string> MakeDWord(double value);

// Infallible forms for values whose range the type already guarantees.
std::string Word(std::uint16_t value);
std::string DWord(std::uint32_t value);

// The first 2 (4) bytes as a big-endian number; nullopt on fewer bytes.
std::optional<std::uint16_t> ReadWord(std::string_view bytes);
std::optional<std::uint32_t> ReadDWord(std::string_view bytes);

// Family and subtype of a SNAC header as eight upper-case hex digits, e.g.
// "00170003". Fewer than 4 bytes give a shorter key that matches nothing.
std::string SnacKey(std::string_view bytes);

// type bytes + length (1, 2 or 4 bytes wide) + value. An empty type writes a
// length-prefixed string. Any other width, or a value too long for its length
// field, gives the empty string.
std::string MakeTLV(std::string_view typeHex, int width, std::string_view value);

// The most TLVs one call of ParseTLVs or ParseTLVsCounted reads.
inline constexpr int kMaxTLVsPerCall = 101;

// Appends type/value pairs to `list` and consumes `data`: on return it holds
// what was not parsed (the bytes after the 101st TLV, or nothing). A value
// cut short by the end of the data is kept as far as it goes.
void ParseTLVs(std::string& data, TLVList& list);

// As ParseTLVs, for a block of exactly `count` TLVs (at most 101, never past
// the end of the data); `data` is left starting right after the block.
void ParseTLVsCounted(std::string& data, int count, TLVList& list);

// The value of the first TLV of `type` (2 raw bytes) in a parsed list.
std::optional<std::string> FindTLV(const TLVList& list, std::string_view type);

// "[Chat]", "[Authorization]", ... for a 2-byte SNAC family; families not in
// the table give "Unknown[XXXX]" without outer brackets.
std::string FamilyName(std::string_view family);

}  // namespace oscar
