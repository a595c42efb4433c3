#include "panel/widgets.h"

#include <QEvent>
#include <QMenu>
#include <QMouseEvent>

void FieldEdit::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    emit focusLost();
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

QLabel* MakeLink(QWidget* parent, const QString& name, const QString& caption,
                 std::function<void()> clicked) {
    QLabel* label =
        MakeLabel(parent, name, QString("<a href=\"#\">%1</a>").arg(caption.toHtmlEscaped()));
    label->setTextFormat(Qt::RichText);
    label->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    QObject::connect(label, &QLabel::linkActivated, label,
                     [clicked](const QString&) { clicked(); });
    return label;
}

namespace {

class RightButtonFilter : public QObject {
  public:
    RightButtonFilter(QMenu* menu, QObject* parent) : QObject(parent), menu_(menu) {}

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::MouseButtonPress) {
            auto* mouse = static_cast<QMouseEvent*>(event);
            if (mouse->button() == Qt::RightButton) {
                menu_->popup(mouse->globalPosition().toPoint());
                return true;
            }
        }
        return QObject::eventFilter(watched, event);
    }

  private:
    QMenu* menu_;
};

}  // namespace

void PopupOnRightButton(QListView* list, QMenu* menu) {
    list->viewport()->installEventFilter(new RightButtonFilter(menu, list));
}
