#include "files/topic_files.h"

#include <algorithm>

#include "files/line_file.h"
#include "text/text.h"

namespace files {

namespace {

// The most skipped lines of one file that the error log lists one by one.
constexpr std::size_t kListedSkips = 100;

struct CheckedTopic {
    game::TopicClass topic;
    std::size_t lines = 0;                                     // non-empty lines read
    std::vector<std::pair<std::size_t, const char*>> skipped;  // line number, reason
};

// Empty lines are no entries; lines that could never be played are left out.
CheckedTopic TopicFromLines(const std::vector<std::string>& lines) {
    CheckedTopic checked;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::string& line = lines[i];
        if (line.empty()) continue;
        ++checked.lines;
        if (const char* reason = game::UnplayableReason(line)) {
            checked.skipped.emplace_back(i + 1, reason);
        } else {
            checked.topic.AddWord(line);
        }
    }
    return checked;
}

// Lists the skipped lines in the error log and gives the sentence that
// sums them up ("" when none was skipped).
std::string ReportSkipped(const CheckedTopic& checked, const std::string& name,
                          const std::string& path, game::StringList& errors) {
    if (checked.skipped.empty()) return {};
    std::vector<std::pair<const char*, std::size_t>> counts;
    for (std::size_t i = 0; i < checked.skipped.size(); ++i) {
        const std::size_t line = checked.skipped[i].first;
        const char* reason = checked.skipped[i].second;
        if (i < kListedSkips) {
            errors.Append("Skipped line " + std::to_string(line) + " of '" + path + "': " + reason +
                          ".");
        }
        auto counted = std::find_if(counts.begin(), counts.end(),
                                    [reason](const auto& c) { return c.first == reason; });
        if (counted == counts.end()) {
            counts.emplace_back(reason, 1);
        } else {
            ++counted->second;
        }
    }
    if (checked.skipped.size() > kListedSkips) {
        errors.Append("... and " + std::to_string(checked.skipped.size() - kListedSkips) +
                      " more skipped lines of '" + path + "'.");
    }
    std::string sentence = std::to_string(checked.skipped.size()) + " of " +
                           std::to_string(checked.lines) + " lines of topic '" + name +
                           "' could never be played and were skipped: ";
    for (std::size_t i = 0; i < counts.size(); ++i) {
        if (i > 0) sentence += ", ";
        sentence += std::to_string(counts[i].second) + " " + counts[i].first;
    }
    return sentence + ". The error log lists them.";
}

}  // namespace

std::string DefaultTopicName(const std::string& path) {
    const std::string name = FileNameOf(path);
    if (path.find('.') == std::string::npos) return name;
    return name.size() > 4 ? name.substr(0, name.size() - 4) : std::string();
}

TopicFiles::TopicFiles(game::WordLists& lists, game::OperatorDialogs& dialogs,
                       game::StringList& errors, std::string programFolder)
    : lists_(lists), dialogs_(dialogs), errors_(errors), programFolder_(std::move(programFolder)) {}

void TopicFiles::Refuse(const std::string& text) {
    dialogs_.ShowMessage(text, "Error", game::MessageKind::Warning);
    errors_.Append(text);
}

int TopicFiles::FindTopic(const std::string& name) const {
    const std::string key = game::TopicKey(name);
    const auto& topics = lists_.Topics();
    for (std::size_t i = 0; i < topics.size(); ++i) {
        if (game::TopicKey(topics[i].GetTopic()) == key) return static_cast<int>(i);
    }
    return -1;
}

void TopicFiles::cmdLoadTopic_Click() {
    const auto path = dialogs_.OpenFile({"Load Scramble List", kTopicFilter, programFolder_, ""});
    if (!path) return;
    const ReadResult file = ReadLines(*path);
    if (file.status != ReadStatus::Ok) {
        // The folder the dialog was left in.
        dialogs_.ShowMessage("Failed to load topic!", "Error", game::MessageKind::Warning);
        errors_.Append("Failed to load topic from directory '" + FolderOf(*path) + "'!");
        return;
    }
    CheckedTopic checked = TopicFromLines(file.lines);
    game::TopicClass& topic = checked.topic;
    topic.SetDirectory(*path);
    // The new topic counts among the loaded ones while its name is asked
    // for: its empty name is what a blank answer runs into.
    auto& topics = lists_.Topics();
    topics.emplace_back();
    const std::string number = std::to_string(topics.size());

    std::string answer =
        dialogs_.Prompt("Give the topic a name.", "Topic Name", DefaultTopicName(*path));
    if (FindTopic(answer) >= 0) {
        dialogs_.ShowMessage(
            "A topic with this name already exists. It has been renamed to Topic #" + number + "!",
            "Note", game::MessageKind::Warning);
        answer.clear();
    }
    std::erase(answer, ':');
    if (answer.empty()) answer = "Topic #" + number;
    topics.pop_back();
    topic.SetTopicName(answer);
    const std::string skipped = ReportSkipped(checked, answer, *path, errors_);
    lists_.AddLoadedTopic(std::move(topic));
    if (!skipped.empty()) dialogs_.ShowMessage(skipped, "Note", game::MessageKind::Warning);
}

void TopicFiles::cmdMerge_Click() {
    if (lists_.lstData().Count() < 2) return Refuse("There are not enough topics to merge!");
    auto& topics = lists_.Topics();
    auto nameAt = [&topics](std::size_t i) {
        return i < topics.size() ? topics[i].GetTopic() : std::string();
    };
    const std::string first =
        dialogs_.Prompt("Please enter in the first topic to merge.", "First Topic", nameAt(0));
    if (first.empty()) return Refuse("You need to enter in a topic name to merge!");
    const int a = FindTopic(first);
    if (a < 0) return Refuse("The topic '" + first + "' was not found!");
    const std::string second =
        dialogs_.Prompt("Please enter in the second topic to merge.", "Second Topic", nameAt(1));
    if (second.empty()) return Refuse("You need to enter in a second topic name to merge!");
    const int b = FindTopic(second);
    if (b < 0) return Refuse("The topic '" + second + "' was not found!");
    if (game::TopicKey(first) == game::TopicKey(second)) {
        return Refuse("You cannot merge the same topic!");
    }
    std::string merged = dialogs_.Prompt("Give the merged topic a name", "Topic Name", first);
    if (text::TrimSpaces(merged).empty()) merged = first;

    game::TopicClass& into = topics[static_cast<std::size_t>(a)];
    game::TopicClass& from = topics[static_cast<std::size_t>(b)];
    for (const std::string& word : from.GetAllWords())
        into.AddWord(word);
    from.RemoveAll();
    lists_.ListRemoveTopic(into.GetTopic());
    lists_.ListRemoveTopic(from.GetTopic());
    lists_.ListAddTopic(merged);
    into.SetTopicName(merged);
    topics.erase(topics.begin() + b);
}

void TopicFiles::cmdSaveList_Click() {
    const game::StringList& words = lists_.lstWords();
    if (words.Empty()) {
        const std::string text = "There is no list to save!";
        dialogs_.ShowMessage(text, "Note", game::MessageKind::Warning);
        errors_.Append(text);
        return;
    }
    const auto path = dialogs_.SaveFile({"Save Scramble List", kTopicFilter, programFolder_, ""});
    if (!path) return;
    if (!WriteLines(*path, words.Rows())) Refuse("Failed to save the list to '" + *path + "'!");
}

void TopicFiles::AutoLoadTopic(const std::string& name, const std::string& path) {
    if (text::TrimSpaces(name).empty() || text::TrimSpaces(path).empty()) return;
    const ReadResult file = ReadLines(path);
    if (file.status != ReadStatus::Ok) {
        errors_.Append("Failed to auto load topic '" + name + "' from directory '" + path + "'!");
        return;
    }
    CheckedTopic checked = TopicFromLines(file.lines);
    checked.topic.SetTopicName(name);
    checked.topic.SetDirectory(path);
    // Loaded with the settings: no box of its own, the summary is logged.
    const std::string skipped = ReportSkipped(checked, name, path, errors_);
    if (!skipped.empty()) errors_.Append(skipped);
    lists_.AddLoadedTopic(std::move(checked.topic));
}

}  // namespace files
