// One loaded topic (a named word list) and the word entries it holds.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace game {

// A word entry is "answer" or "answer,hint": the first comma splits it, and
// everything after it (further commas included) is the hint, untrimmed.
struct EntryParts {
    std::string answer;
    std::optional<std::string> hint;  // nullopt when the entry has no comma
};
EntryParts SplitEntry(std::string_view entry);

// The longest entry a topic takes: its puzzle line (a blanked answer is
// three times as long) must fit in one chat line of the usual 1024 bytes,
// with room for the style prefix.
inline constexpr std::size_t kMaxEntryLength = 255;

// Why `entry` can never be played ("longer than 255 characters", "with
// control characters", "without an answer", "with markup in the answer"),
// or nullptr when it can. A player's line reaches the answer check trimmed
// and without tags, so an empty answer would match a blank line and an
// answer with a tag would match nothing.
const char* UnplayableReason(std::string_view entry);

// Topic names are matched by their key: lower case, every space removed.
std::string TopicKey(std::string_view name);

class TopicClass {
  public:
    void AddWord(std::string StrWord) { TopicList.push_back(std::move(StrWord)); }
    void RemoveAll() { TopicList.clear(); }
    const std::vector<std::string>& GetAllWords() const { return TopicList; }
    const std::string& GetTopic() const { return TopicName; }
    void SetTopicName(std::string StrName) { TopicName = std::move(StrName); }
    void SetDirectory(std::string StrDir) { FilePath = std::move(StrDir); }
    const std::string& GetDir() const { return FilePath; }

  private:
    std::vector<std::string> TopicList;
    std::string TopicName;
    std::string FilePath;
};

}  // namespace game
