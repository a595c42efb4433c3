#include "game/topic.h"

#include "text/text.h"

namespace game {

EntryParts SplitEntry(std::string_view entry) {
    const auto comma = entry.find(',');
    if (comma == std::string_view::npos) return {std::string(entry), std::nullopt};
    return {std::string(entry.substr(0, comma)), std::string(entry.substr(comma + 1))};
}

const char* UnplayableReason(std::string_view entry) {
    if (entry.size() > kMaxEntryLength) return "longer than 255 characters";
    for (char c : entry) {
        const auto b = static_cast<unsigned char>(c);
        if (b < 0x20 || b == 0x7F) return "with control characters";
    }
    const std::string answer = text::TrimSpaces(SplitEntry(entry).answer);
    if (answer.empty()) return "without an answer";
    if (text::StripTags(answer) != answer) return "with markup in the answer";
    return nullptr;
}

std::string TopicKey(std::string_view name) {
    return text::NormalizeName(name);
}

}  // namespace game
