#include "panel/widgets.h"

#include <QAccessible>
#include <QEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <algorithm>

#include "panel/accessibility.h"

void FieldEdit::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    // Switching to another program, or opening a menu or a message box, only
    // deactivates the window: the operator has not left the field.
    if (event->reason() == Qt::ActiveWindowFocusReason || event->reason() == Qt::PopupFocusReason) {
        return;
    }
    emit focusLost();
}

void FieldEdit::ShowText(const QString& text) {
    if (typingLimit_ == 0) {
        typingLimit_ = maxLength();
        connect(this, &QLineEdit::textChanged, this, [this](const QString& now) {
            if (now.size() <= typingLimit_ && maxLength() != typingLimit_) {
                setMaxLength(typingLimit_);
            }
        });
    }
    setMaxLength(std::max(typingLimit_, static_cast<int>(text.size())));
    setText(text);
}

QLabel* MakeLabel(QWidget* parent, const QString& name, const QString& text) {
    auto* label = new QLabel(text, parent);
    label->setObjectName(name);
    return label;
}

QLabel* MakeTitle(QWidget* parent, int miscIndex, const QString& text) {
    QLabel* label = MakeLabel(parent, QString("lblMisc%1").arg(miscIndex), text);
    QFont font = label->font();
    font.setBold(true);
    font.setPointSizeF(font.pointSizeF() * 1.3);
    label->setFont(font);
    return label;
}

QLabel* MakeNote(QWidget* parent, int miscIndex, const QString& text) {
    QLabel* label = MakeLabel(parent, QString("lblMisc%1").arg(miscIndex), text);
    label->setWordWrap(true);
    return label;
}

FieldEdit* MakeField(QWidget* parent, const QString& name, const QString& text, int maxLength,
                     const QString& label, const QString& tooltip) {
    auto* field = new FieldEdit(text, parent);
    field->setObjectName(name);
    if (maxLength > 0) field->setMaxLength(maxLength);
    // Short fields (a port, an exchange, seconds) need not span the panel.
    if (maxLength > 0 && maxLength <= 5) {
        field->setMaximumWidth(field->fontMetrics().horizontalAdvance('0') * 12 + 16);
    }
    field->setAccessibleName(label);
    if (!tooltip.isEmpty()) field->setToolTip(tooltip);
    return field;
}

QPushButton* MakeButton(QWidget* parent, const QString& name, const QString& caption) {
    auto* button = new QPushButton(caption, parent);
    button->setObjectName(name);
    button->setAccessibleName(caption == "?" ? "Help" : caption);
    if (caption == "?") button->setFixedWidth(button->sizeHint().height() + 8);
    return button;
}

QCheckBox* MakeCheck(QWidget* parent, const QString& name, const QString& caption, bool checked,
                     const QString& tooltip) {
    auto* check = new QCheckBox(caption, parent);
    check->setObjectName(name);
    check->setChecked(checked);
    if (!tooltip.isEmpty()) check->setToolTip(tooltip);
    return check;
}

QListView* MakeList(QWidget* parent, const QString& name, const QString& label) {
    auto* list = new QListView(parent);
    list->setObjectName(name);
    list->setAccessibleName(label);
    list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    return list;
}

namespace {

class LinkKeys : public QObject {
  public:
    explicit LinkKeys(QLabel* label) : QObject(label), label_(label) {}

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == label_ && event->type() == QEvent::KeyPress) {
            const int key = static_cast<QKeyEvent*>(event)->key();
            if (key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space) {
                emit label_->linkActivated(QString());
                return true;
            }
        }
        return QObject::eventFilter(watched, event);
    }

  private:
    QLabel* label_;
};

}  // namespace

QLabel* MakeLink(QWidget* parent, const QString& name, const QString& caption,
                 std::function<void()> clicked) {
    // Marked before it gets its text: setting a label's text makes Qt look up
    // (and keep) what it reports to assistive technology.
    auto* label = new LinkLabel(parent);
    MarkAsLink(label, caption);
    label->setObjectName(name);
    label->setTextFormat(Qt::RichText);
    label->setText(QString("<a href=\"#\">%1</a>").arg(caption.toHtmlEscaped()));
    label->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    // Reached with Tab and followed with Enter or Space, as a link in a page.
    label->setFocusPolicy(Qt::StrongFocus);
    label->installEventFilter(new LinkKeys(label));
    QObject::connect(label, &QLabel::linkActivated, label,
                     [clicked](const QString&) { clicked(); });
    return label;
}

namespace {

class PopupFilter : public QObject {
  public:
    PopupFilter(QListView* list, QMenu* menu) : QObject(list), list_(list), menu_(menu) {}

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::MouseButtonPress && watched == list_->viewport()) {
            auto* mouse = static_cast<QMouseEvent*>(event);
            if (mouse->button() == Qt::RightButton) {
                menu_->popup(mouse->globalPosition().toPoint());
                return true;
            }
        }
        if (event->type() == QEvent::KeyPress && watched == list_) {
            auto* key = static_cast<QKeyEvent*>(event);
            const bool menuKey = key->key() == Qt::Key_Menu && key->modifiers() == Qt::NoModifier;
            const bool shiftF10 =
                key->key() == Qt::Key_F10 && key->modifiers() == Qt::ShiftModifier;
            if (menuKey || shiftF10) {
                menu_->popup(list_->viewport()->mapToGlobal(SelectedRowCorner()));
                return true;
            }
        }
        return QObject::eventFilter(watched, event);
    }

  private:
    // Below the selected row, or the list's top corner when none is selected.
    QPoint SelectedRowCorner() const {
        const QModelIndex current = list_->currentIndex();
        if (!current.isValid()) return {0, 0};
        return list_->visualRect(current).bottomLeft();
    }

    QListView* list_;
    QMenu* menu_;
};

}  // namespace

void AttachPopup(QListView* list, QMenu* menu) {
    auto* filter = new PopupFilter(list, menu);
    list->viewport()->installEventFilter(filter);
    list->installEventFilter(filter);
}

void ShowStatus(QLabel* label, const QString& text) {
    if (label->text() == text) return;
    label->setText(text);
    // A status line changes while the operator's focus is elsewhere; an
    // alert on it lets a screen reader say the new text.
    QAccessibleEvent alert(label, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}
