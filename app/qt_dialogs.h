// The operator's dialogs on Qt: message boxes, Yes/No questions, prompts and
// file dialogs, each modal to the main window.
#pragma once

#include <QPointer>
#include <QWidget>

#include "game/operator_dialogs.h"

class QtDialogs : public game::OperatorDialogs {
  public:
    void SetParent(QWidget* parent) { parent_ = parent; }

    void ShowMessage(const std::string& text, const std::string& title,
                     game::MessageKind kind) override;
    bool AskYesNo(const std::string& text, const std::string& title) override;
    std::string Prompt(const std::string& prompt, const std::string& title,
                       const std::string& defaultText) override;
    std::optional<std::string> OpenFile(const game::FileDialogRequest& request) override;
    std::optional<std::string> SaveFile(const game::FileDialogRequest& request) override;

  private:
    QPointer<QWidget> parent_;
};
