// Topic files: loading one as a topic, merging two topics, saving the
// scramble list, and loading a topic named by the settings file.
#pragma once

#include <string>

#include "game/operator_dialogs.h"
#include "game/string_list.h"
#include "game/word_lists.h"

namespace files {

// The file dialogs' filter list, in "name|pattern|name|pattern|" form.
inline constexpr const char* kTopicFilter =
    "Scramble Lists (*.csv)|*.csv|Scramble Lists (*.txt)|*.txt|All files (*.*)|*.*|";

// The name proposed for a topic loaded from `path`: the file name, less its
// last four characters when the path holds a dot anywhere.
std::string DefaultTopicName(const std::string& path);

class TopicFiles {
  public:
    TopicFiles(game::WordLists& lists, game::OperatorDialogs& dialogs, game::StringList& errors,
               std::string programFolder);

    void cmdLoadTopic_Click();
    void cmdMerge_Click();
    void cmdSaveList_Click();
    void AutoLoadTopic(const std::string& name, const std::string& path);

  private:
    // A warning titled "Error", and the same text in the error log.
    void Refuse(const std::string& text);
    // The first loaded topic whose key is that of `name`, or -1.
    int FindTopic(const std::string& name) const;

    game::WordLists& lists_;
    game::OperatorDialogs& dialogs_;
    game::StringList& errors_;
    std::string programFolder_;
};

}  // namespace files
