// What the program asks of the operator: message boxes, Yes/No questions,
// one-line prompts and file dialogs. The window implements it with Qt dialogs;
// tests use a fake that records what was asked and answers as scripted.
#pragma once

#include <optional>
#include <string>

namespace game {

enum class MessageKind { Plain, Warning, Information, Error };

struct FileDialogRequest {
    std::string title;
    std::string filter;    // "Text files (*.txt)|*.txt|All files (*.*)|*.*" style
    std::string folder;    // where the dialog opens
    std::string fileName;  // proposed name, may be empty
};

class OperatorDialogs {
  public:
    virtual ~OperatorDialogs() = default;

    // A box with an OK button. The warning kind is the exclamation icon.
    virtual void ShowMessage(const std::string& text, const std::string& title,
                             MessageKind kind) = 0;
    // A box with Yes and No; true for Yes.
    virtual bool AskYesNo(const std::string& text, const std::string& title) = 0;
    // A one-line prompt; cancelling gives the empty text.
    virtual std::string Prompt(const std::string& prompt, const std::string& title,
                               const std::string& defaultText) = 0;
    // The chosen path, or nullopt when cancelled. The save dialog asks before
    // overwriting an existing file.
    virtual std::optional<std::string> OpenFile(const FileDialogRequest& request) = 0;
    virtual std::optional<std::string> SaveFile(const FileDialogRequest& request) = 0;
};

}  // namespace game
