#include "panel/accessibility.h"

#include <QAccessibleWidget>
#include <QLabel>
#include <QVariant>

#include "panel/widgets.h"

namespace {

constexpr const char* kRoleProperty = "scramblerAccessibleRole";
constexpr const char* kLinkProperty = "scramblerLinkCaption";

class AccessibleLink : public QAccessibleWidget {
  public:
    explicit AccessibleLink(QLabel* label) : QAccessibleWidget(label, QAccessible::Link) {}

    QString text(QAccessible::Text t) const override {
        if (t == QAccessible::Name) return widget()->property(kLinkProperty).toString();
        return QAccessibleWidget::text(t);
    }
    QStringList actionNames() const override {
        return QStringList{pressAction()} + QAccessibleWidget::actionNames();
    }
    void doAction(const QString& actionName) override {
        if (actionName != pressAction()) return QAccessibleWidget::doAction(actionName);
        auto* label = static_cast<QLabel*>(widget());
        emit label->linkActivated(label->property(kLinkProperty).toString());
    }
};

QAccessibleInterface* Factory(const QString&, QObject* object) {
    if (!object || !object->isWidgetType()) return nullptr;
    auto* widget = static_cast<QWidget*>(object);
    if (auto* label = qobject_cast<LinkLabel*>(widget);
        label && label->property(kLinkProperty).isValid()) {
        return new AccessibleLink(label);
    }
    const QVariant role = widget->property(kRoleProperty);
    if (role.isValid())
        return new QAccessibleWidget(widget, static_cast<QAccessible::Role>(role.toInt()));
    return nullptr;
}

}  // namespace

void InstallAccessibleRoles() {
    static const bool installed = [] {
        QAccessible::installFactory(Factory);
        return true;
    }();
    (void)installed;
}

void SetAccessibleRole(QWidget* widget, QAccessible::Role role) {
    widget->setProperty(kRoleProperty, static_cast<int>(role));
}

void MarkAsLink(QLabel* label, const QString& caption) {
    label->setProperty(kLinkProperty, caption);
}
