// What the window's widgets report to assistive technology beyond Qt's own
// reports: a role set on a widget (the main window as an application window,
// the panels as panes) and the link labels as links that can be pressed.
#pragma once

#include <QAccessible>

class QLabel;
class QWidget;

// Installs the roles below; safe to call more than once.
void InstallAccessibleRoles();
// `widget` reports `role` instead of the one Qt gives its class.
void SetAccessibleRole(QWidget* widget, QAccessible::Role role);
// `label` reports itself as a link named by its caption; pressing it (from a
// screen reader, or Enter on the focused link) follows it.
void MarkAsLink(QLabel* label, const QString& caption);
