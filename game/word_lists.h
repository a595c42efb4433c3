// The loaded topics, their "Loaded Topics" rows, the scramble list (the
// playing order, whose selected row is the entry in play) and the current
// topic, with the operations that fill, empty and shuffle them.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "game/operator_dialogs.h"
#include "game/random.h"
#include "game/string_list.h"
#include "game/topic.h"

namespace game {

class WordLists {
  public:
    // `errors` is the error log (each refusal adds its text as a row);
    // `openTopicPicker` shows the topic picker window.
    WordLists(OperatorDialogs& dialogs, StringList& errors, std::function<void()> openTopicPicker);

    std::vector<TopicClass>& Topics() { return topics_; }
    const std::vector<TopicClass>& Topics() const { return topics_; }
    StringList& lstData() { return loadedTopics_; }
    StringList& lstWords() { return scrambleList_; }
    const StringList& lstData() const { return loadedTopics_; }
    const StringList& lstWords() const { return scrambleList_; }

    // The position in the scramble list: the selected row, -1 when none.
    int Position() const { return scrambleList_.Selected(); }
    void SetPosition(int row) { scrambleList_.Select(row); }

    // The topic in play ("[None]" at start) and what its label shows (the
    // label keeps "None" until the first UpdateTopic).
    const std::string& CurrentTopic() const { return currentTopic_; }
    const std::string& lblCurrentTopic() const { return topicLabel_; }
    void SetTopicLabelObserver(std::function<void(const std::string&)> observer) {
        topicLabelChanged_ = std::move(observer);
    }

    // Appends a loaded topic and its row; the topic loader's last step.
    void AddLoadedTopic(TopicClass topic);

    void AddTopicList(std::string_view strTopic);
    void UpdateTopic(std::string_view strTopic);
    void ListAddTopic(std::string_view strTopic);
    void ListRemoveTopic(std::string_view strTopic);
    void RemoveTopic(std::string_view strTopic);

    void cmdAddTopic_Click();
    void cmdSendToList_Click();
    void cmdClearList_Click();
    void cmdClearAll_Click();
    void cmdRandomize_Click(RandomSource& random);

  private:
    OperatorDialogs& dialogs_;
    StringList& errors_;
    std::function<void()> openTopicPicker_;
    std::function<void(const std::string&)> topicLabelChanged_;

    std::vector<TopicClass> topics_;
    StringList loadedTopics_;
    StringList scrambleList_;
    std::string currentTopic_ = "[None]";
    std::string topicLabel_ = "None";
};

// Shuffles `rows` so that every ordering is equally likely: the entry taken
// next is drawn uniformly from those left, in one pass.
void ShuffleRows(std::vector<std::string>& rows, RandomSource& random);

}  // namespace game
