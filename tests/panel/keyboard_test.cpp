// The window without a mouse: every panel by its shortcut, every list menu by
// the Menu key and Shift+F10, the links by Enter, and what assistive
// technology is told (roles, names, status changes).
#include <QtGui/private/qguiapplication_p.h>
#include <QtGui/qpa/qplatformaccessibility.h>
#include <QtGui/qpa/qplatformintegration.h>
#include <QAccessible>
#include <QMenu>

#include "game/product.h"
#include "support/window_fixture.h"

namespace {

using testing_support::WindowTest;

class KeyboardTest : public WindowTest {
  protected:
    KeyboardTest() {
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }
};

TEST_F(KeyboardTest, EveryPanelOpensByItsShortcutAndStaysWhenItsTabIsReleased) {
    for (int i = FrmMain::kTabs - 1; i >= 0; --i) {
        const QKeySequence keys = FrmMain::PanelShortcut(i);
        QTest::keySequence(QApplication::focusWidget() ? QApplication::focusWidget() : &window,
                           keys);
        for (int j = 0; j < FrmMain::kTabs; ++j) {
            EXPECT_EQ(window.pBoxMain[j]->isVisible(), j == i) << i << " " << j;
            EXPECT_EQ(window.chkTab[j]->isChecked(), j == i) << i << " " << j;
        }
        EXPECT_TRUE(window.pBoxMain[i]->isAncestorOf(QApplication::focusWidget())) << i;
        // A click on the pressed tab releases it; its panel stays.
        QTest::mouseClick(window.chkTab[i], Qt::LeftButton);
        EXPECT_TRUE(!window.chkTab[i]->isChecked() && window.pBoxMain[i]->isVisible()) << i;
    }
}

TEST_F(KeyboardTest, EveryListMenuOpensByKeyboardAndByTheRightButton) {
    const std::tuple<int, QListView*, QMenu*> menus[] = {
        {3, window.scrambleList->lstWords, window.scrambleList->mnuScramble},
        {4, window.topics->lstData, window.topics->mnuTopics},
        {5, window.players->lstPlayers, window.players->mnuPlayers},
        {7, window.ops->lstOps, window.ops->mnuOp},
        {7, window.ops->lstDisallows, window.ops->mnuDisallow}};
    for (const auto& [panel, list, menu] : menus) {
        window.ShowPanel(panel);
        list->setFocus();
        for (const QKeyCombination key :
             {QKeyCombination(Qt::Key_Menu), QKeyCombination(Qt::ShiftModifier, Qt::Key_F10)}) {
            QTest::keyClick(list, key.key(), key.keyboardModifiers());
            EXPECT_TRUE(menu->isVisible()) << menu->objectName().toStdString();
            menu->hide();
        }
        // The right button opens it too.
        QTest::mousePress(list->viewport(), Qt::RightButton, {}, QPoint(10, 10));
        EXPECT_TRUE(menu->isVisible()) << menu->objectName().toStdString();
        menu->close();
    }
}

TEST_F(KeyboardTest, AssistiveTechnologyFindsTheWindowPanelsControlsAndLinks) {
    QAccessibleInterface* main = QAccessible::queryAccessibleInterface(&window);
    ASSERT_NE(main, nullptr);
    EXPECT_EQ(main->role(), QAccessible::Window);
    EXPECT_EQ(main->text(QAccessible::Name), "Vexmor Scrambler 2.0");
    for (int i = 0; i < FrmMain::kTabs; ++i) {
        QAccessibleInterface* panel = QAccessible::queryAccessibleInterface(window.pBoxMain[i]);
        EXPECT_EQ(panel->role(), QAccessible::Pane) << i;
        EXPECT_EQ(panel->text(QAccessible::Name), window.chkTab[i]->text()) << i;
    }
    EXPECT_NE(
        QAccessible::queryAccessibleInterface(window.console->txtSend)->text(QAccessible::Name),
        QAccessible::queryAccessibleInterface(window.console->cmdSendChat)
            ->text(QAccessible::Name));

    const std::tuple<QLabel*, int, QString, std::string_view> links[] = {
        {window.lblSite, 0, "http://www.vexmor.com", game::kProductSite},
        {window.fonts->lblHexList, 6, "Valid Hex Color List", game::kHexColorList}};
    for (const auto& [label, panel, name, url] : links) {
        QAccessibleInterface* a = QAccessible::queryAccessibleInterface(label);
        EXPECT_EQ(a->role(), QAccessible::Link);
        EXPECT_EQ(a->text(QAccessible::Name), name);
        opened.clear();
        a->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        EXPECT_EQ(opened, std::vector<std::string>{std::string(url)});

        window.ShowPanel(panel);
        EXPECT_TRUE(label->focusPolicy() & Qt::TabFocus);
        label->setFocus(Qt::TabFocusReason);
        opened.clear();
        QTest::keyClick(label, Qt::Key_Return);
        EXPECT_EQ(opened, std::vector<std::string>{std::string(url)});
    }
}

TEST_F(KeyboardTest, StatusChangesAreAnnounced) {
    static std::vector<QObject*> alerts;  // what was announced, in order
    alerts.clear();
    // As when a screen reader is running; the handler takes the events.
    QPlatformAccessibility* platform =
        QGuiApplicationPrivate::platformIntegration()->accessibility();
    ASSERT_NE(platform, nullptr);
    platform->setActive(true);
    QAccessible::installUpdateHandler([](QAccessibleEvent* e) {
        if (e->type() == QAccessible::Alert) alerts.push_back(e->object());
    });
    bot.session.LoggedIn("bot", "", "");
    bot.session.JoinedChat("Word Games", 4, 0, 1, 40, 1024);
    QAccessible::installUpdateHandler(nullptr);
    platform->setActive(false);
    EXPECT_EQ(alerts,
              (std::vector<QObject*>{window.connection->lblInfo, window.chats->lblChatStatus}));
}

}  // namespace
