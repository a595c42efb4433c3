// Small makers for the window's controls: each control gets its name as its
// objectName and a name a screen reader can say.
#pragma once

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QRadioButton>
#include <QString>
#include <functional>

class QMenu;

// A line edit that reports the operator leaving it for another control of
// the window (not the window losing focus to another program or to a menu).
class FieldEdit : public QLineEdit {
    Q_OBJECT

  public:
    using QLineEdit::QLineEdit;

    // Shows `text` whole even when it is longer than the field lets the
    // operator type (a value read from a file); the typing limit comes back
    // once the text fits it again.
    void ShowText(const QString& text);

  signals:
    void focusLost();

  protected:
    void focusOutEvent(QFocusEvent* event) override;

  private:
    int typingLimit_ = 0;
};

// A label that holds one link (its own class, so that assistive technology
// can be told it is a link).
class LinkLabel : public QLabel {
    Q_OBJECT

  public:
    using QLabel::QLabel;
};

QLabel* MakeLabel(QWidget* parent, const QString& name, const QString& text);
// A panel's title: "lblMisc" + its index.
QLabel* MakeTitle(QWidget* parent, int miscIndex, const QString& text);
// A note: "lblMisc" + its index, wrapped.
QLabel* MakeNote(QWidget* parent, int miscIndex, const QString& text);
// A text box named by the label shown beside it.
FieldEdit* MakeField(QWidget* parent, const QString& name, const QString& text, int maxLength,
                     const QString& label, const QString& tooltip = {});
QPushButton* MakeButton(QWidget* parent, const QString& name, const QString& caption);
QCheckBox* MakeCheck(QWidget* parent, const QString& name, const QString& caption,
                     bool checked = false, const QString& tooltip = {});
QListView* MakeList(QWidget* parent, const QString& name, const QString& label);
// A label drawn as a link; `clicked` runs when it is followed.
QLabel* MakeLink(QWidget* parent, const QString& name, const QString& caption,
                 std::function<void()> clicked);
// Opens `menu` at the pointer when the right button goes down over `list`,
// and at the selected row on the Menu key or Shift+F10.
void AttachPopup(QListView* list, QMenu* menu);
// Shows a status text and announces its change to assistive technology.
void ShowStatus(QLabel* label, const QString& text);
