#include "game/topic.h"

#include "text/text.h"

namespace game {

EntryParts SplitEntry(std::string_view entry) {
    const auto comma = entry.find(',');
    if (comma == std::string_view::npos) return {std::string(entry), std::nullopt};
    return {std::string(entry.substr(0, comma)), std::string(entry.substr(comma + 1))};
}

std::string TopicKey(std::string_view name) {
    return text::NormalizeName(name);
}

}  // namespace game
