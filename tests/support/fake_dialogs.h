// Operator dialogs for tests: records every box, question and prompt, and
// answers from scripted queues (No, the empty text and Cancel when a queue
// runs dry).
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "game/operator_dialogs.h"

namespace testing_support {

// A box, question or prompt as shown; a prompt's default text with it.
struct ShownMessage {
    std::string text;
    std::string title;
    game::MessageKind kind;
    std::string defaultText;
};

class FakeDialogs : public game::OperatorDialogs {
  public:
    void ShowMessage(const std::string& text, const std::string& title,
                     game::MessageKind kind) override {
        messages.push_back({text, title, kind, {}});
    }
    bool AskYesNo(const std::string& text, const std::string& title) override {
        questions.push_back({text, title, game::MessageKind::Plain, {}});
        return Next(yesNoAnswers, false);
    }
    std::string Prompt(const std::string& prompt, const std::string& title,
                       const std::string& defaultText) override {
        prompts.push_back({prompt, title, game::MessageKind::Plain, defaultText});
        return Next(promptAnswers, std::string());
    }
    std::optional<std::string> OpenFile(const game::FileDialogRequest& request) override {
        fileRequests.push_back(request);
        return Next(fileAnswers, std::optional<std::string>());
    }
    std::optional<std::string> SaveFile(const game::FileDialogRequest& request) override {
        return OpenFile(request);
    }

    // The boxes shown, as their text or as "title: text".
    std::vector<std::string> Texts(bool withTitles = false) const {
        std::vector<std::string> texts;
        for (const auto& m : messages)
            texts.push_back(withTitles ? m.title + ": " + m.text : m.text);
        return texts;
    }

    std::vector<ShownMessage> messages;
    std::vector<ShownMessage> questions;
    std::vector<ShownMessage> prompts;
    std::vector<game::FileDialogRequest> fileRequests;

    std::deque<bool> yesNoAnswers;
    std::deque<std::string> promptAnswers;
    std::deque<std::optional<std::string>> fileAnswers;

  private:
    template <typename T>
    static T Next(std::deque<T>& queue, T fallback) {
        if (queue.empty()) return fallback;
        T value = queue.front();
        queue.pop_front();
        return value;
    }
};

}  // namespace testing_support
