#include "app/qt_dialogs.h"

#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QStringList>

#include "panel/cp1252.h"

namespace {

// "Text (*.txt)|*.txt|All (*.*)|*.*" as Qt writes filters: "Text (*.txt);;All (*.*)".
QString QtFilter(const std::string& filter) {
    const QStringList parts = FromCp1252(filter).split('|');
    QStringList filters;
    for (int i = 0; i + 1 < parts.size(); i += 2) {
        const QString& name = parts[i];
        filters << (name.contains('(') ? name : name + " (" + parts[i + 1] + ")");
    }
    return filters.join(";;");
}

}  // namespace

void QtDialogs::ShowMessage(const std::string& text, const std::string& title,
                            game::MessageKind kind) {
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    switch (kind) {
        case game::MessageKind::Warning:
            icon = QMessageBox::Warning;
            break;
        case game::MessageKind::Information:
            icon = QMessageBox::Information;
            break;
        case game::MessageKind::Error:
            icon = QMessageBox::Critical;
            break;
        case game::MessageKind::Plain:
            break;
    }
    QString body = FromCp1252(text);
    body.replace("\r\n", "\n").replace('\r', '\n');
    QMessageBox box(icon, FromCp1252(title), body, QMessageBox::Ok, parent_);
    box.exec();
}

bool QtDialogs::AskYesNo(const std::string& text, const std::string& title) {
    QMessageBox box(QMessageBox::NoIcon, FromCp1252(title), FromCp1252(text),
                    QMessageBox::Yes | QMessageBox::No, parent_);
    return box.exec() == QMessageBox::Yes;
}

std::string QtDialogs::Prompt(const std::string& prompt, const std::string& title,
                              const std::string& defaultText) {
    bool ok = false;
    const QString answer = QInputDialog::getText(parent_, FromCp1252(title), FromCp1252(prompt),
                                                 QLineEdit::Normal, FromCp1252(defaultText), &ok);
    return ok ? ToCp1252(answer) : std::string();
}

std::optional<std::string> QtDialogs::OpenFile(const game::FileDialogRequest& request) {
    const QString path = QFileDialog::getOpenFileName(
        parent_, FromCp1252(request.title), FromCp1252(request.folder), QtFilter(request.filter));
    if (path.isEmpty()) return std::nullopt;
    return path.toLocal8Bit().toStdString();
}

std::optional<std::string> QtDialogs::SaveFile(const game::FileDialogRequest& request) {
    QString start = FromCp1252(request.folder);
    if (!request.fileName.empty()) start += "/" + FromCp1252(request.fileName);
    const QString path = QFileDialog::getSaveFileName(parent_, FromCp1252(request.title), start,
                                                      QtFilter(request.filter));
    if (path.isEmpty()) return std::nullopt;
    return path.toLocal8Bit().toStdString();
}
