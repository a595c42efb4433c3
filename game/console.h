// The chat console: the transcript of the room as the operator sees it.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace game {

class Console {
  public:
    // The most the transcript holds before the next line empties it first.
    static constexpr std::size_t kLimit = 65535;

    const std::string& Text() const { return text_; }

    // Appends `line`, its control characters made visible, and a CR LF; a
    // transcript already at the limit is emptied first.
    void AppendLine(std::string_view line);
    void Clear();

    // Told of every change: the text appended, or an empty text after a clear
    // (`cleared` true in both the clear and the append that emptied first).
    void SetObserver(std::function<void(std::string_view appended, bool cleared)> observer) {
        observer_ = std::move(observer);
    }

  private:
    std::string text_;
    std::function<void(std::string_view, bool)> observer_;
};

}  // namespace game
