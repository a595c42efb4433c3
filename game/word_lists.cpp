#include "game/word_lists.h"

#include <cstdint>

#include "text/text.h"

namespace game {

namespace {
constexpr std::size_t kLookAhead = 16;
}

WordLists::WordLists(OperatorDialogs& dialogs, StringList& errors,
                     std::function<void()> openTopicPicker)
    : dialogs_(dialogs), errors_(errors), openTopicPicker_(std::move(openTopicPicker)) {}

void WordLists::AddLoadedTopic(TopicClass topic) {
    const std::string name = topic.GetTopic();
    topics_.push_back(std::move(topic));
    ListAddTopic(name);
}

void WordLists::AddTopicList(std::string_view strTopic) {
    const std::string key = TopicKey(strTopic);
    for (const TopicClass& topic : topics_) {
        if (TopicKey(topic.GetTopic()) != key) continue;
        UpdateTopic(topic.GetTopic());
        scrambleList_.AppendAll(topic.GetAllWords());
        return;
    }
    UpdateTopic("");
}

void WordLists::UpdateTopic(std::string_view strTopic) {
    currentTopic_ = text::TrimSpaces(strTopic);
    topicLabel_ = currentTopic_;
    if (topicLabelChanged_) topicLabelChanged_(topicLabel_);
}

void WordLists::ListAddTopic(std::string_view strTopic) {
    loadedTopics_.Append(text::TrimSpaces(strTopic));
}

void WordLists::ListRemoveTopic(std::string_view strTopic) {
    const std::string key = TopicKey(strTopic);
    loadedTopics_.RemoveIf([&key](const std::string& row) { return TopicKey(row) == key; });
}

void WordLists::RemoveTopic(std::string_view strTopic) {
    if (topics_.empty()) return;
    const std::string key = TopicKey(strTopic);
    std::erase_if(topics_, [&key](const TopicClass& t) { return TopicKey(t.GetTopic()) == key; });
    ListRemoveTopic(strTopic);
}

void WordLists::cmdAddTopic_Click() {
    if (topics_.empty()) {
        const std::string text = "There are no topics loaded to add!";
        dialogs_.ShowMessage(text, "Note", MessageKind::Warning);
        errors_.Append(text);
        return;
    }
    if (openTopicPicker_) openTopicPicker_();
}

void WordLists::cmdSendToList_Click() {
    const int row = loadedTopics_.Selected();
    if (row >= 0) AddTopicList(loadedTopics_.At(row));
}

void WordLists::cmdClearList_Click() {
    scrambleList_.Clear();
    UpdateTopic("[None]");
}

void WordLists::cmdClearAll_Click() {
    topics_.clear();
    loadedTopics_.Clear();
}

void WordLists::cmdRandomize_Click(RandomSource& random) {
    std::vector<std::string> rows = scrambleList_.TakeAll();
    ShuffleRows(rows, random);
    scrambleList_.Assign(std::move(rows));
}

void ShuffleRows(std::vector<std::string>& rows, RandomSource& random) {
    // Draw the k-th of the n entries left and move the last one into its
    // place: each draw stays uniform and costs O(1) instead of a shift. The
    // draws run on a small array of positions, and the entries are moved once
    // each at the end.
    std::vector<std::uint32_t> left(rows.size());
    for (std::size_t i = 0; i < left.size(); ++i)
        left[i] = static_cast<std::uint32_t>(i);
    std::vector<std::uint32_t> order;
    order.reserve(rows.size());
    while (!left.empty()) {
        const auto k = static_cast<std::size_t>(
            random.RandomNumber(static_cast<long long>(left.size()), 1) - 1);
        order.push_back(left[k]);
        left[k] = left.back();
        left.pop_back();
    }
    std::vector<std::string> shuffled;
    shuffled.reserve(rows.size());
    for (std::size_t i = 0; i < order.size(); ++i) {
        // A long list does not fit in cache and these reads jump around it;
        // asking for an entry a few steps ahead overlaps the waits.
        if (i + kLookAhead < order.size()) __builtin_prefetch(&rows[order[i + kLookAhead]]);
        shuffled.push_back(std::move(rows[order[i]]));
    }
    rows = std::move(shuffled);
}

}  // namespace game
