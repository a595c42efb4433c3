// A main window over a real client on Qt sockets, with recording dialogs and
// hand-ticked timers, for tests that drive the window through its controls.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QFocusEvent>
#include <QTemporaryDir>
#include <QTest>

#include "app/qt_socket_layer.h"
#include "panel/frm_main.h"
#include "session/bot.h"
#include "support/fake_dialogs.h"
#include "support/fake_timer.h"

namespace testing_support {

class WindowTest : public ::testing::Test {
  protected:
    WindowTest() { window.show(); }

    // Leaving a field, as moving the focus elsewhere does.
    static void LeaveField(QLineEdit* field, const QString& text) {
        field->setText(text);
        QFocusEvent out(QEvent::FocusOut, Qt::TabFocusReason);
        QApplication::sendEvent(field, &out);
    }

    std::vector<std::string> MessageTexts() const { return dialogs.Texts(); }

    QTemporaryDir folder;
    FakeDialogs dialogs;
    QtSocketLayer sockets;
    FakeTimer tmrMsgPause, tmrIdle, tmrTopics, tmrCcoms, tmrCcom2, tmrDeadline;
    std::vector<std::string> opened;
    session::Bot bot{{sockets, tmrMsgPause, tmrIdle, tmrTopics, tmrCcoms, tmrCcom2, tmrDeadline,
                      dialogs, [this](const std::string& url) { opened.push_back(url); }, nullptr,
                      folder.path().toStdString()}};
    FrmMain window{bot};
};

}  // namespace testing_support
