#include "game/console.h"

#include "text/text.h"

namespace game {

void Console::AppendLine(std::string_view line) {
    const bool cleared = text_.size() >= kLimit;
    if (cleared) text_.clear();
    const std::size_t start = text_.size();
    // The line break is the console's own: one inside the text (a player's
    // CR LF, say) is shown, not obeyed.
    text_.append(text::VisibleControls(line));
    text_.append("\r\n");
    if (observer_) observer_(std::string_view(text_).substr(start), cleared);
}

void Console::Clear() {
    text_.clear();
    if (observer_) observer_({}, true);
}

}  // namespace game
