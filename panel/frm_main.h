// The main window: a column of eleven tab buttons in a frame captioned
// "Contents", the eleven panels in one place beside it, and the site link.
#pragma once

#include <QGroupBox>
#include <QKeySequence>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QWidget>
#include <array>

#include "panel/game_panels.h"
#include "panel/option_panels.h"
#include "panel/session_panels.h"
#include "session/bot.h"

class TopicPicker;

class FrmMain : public QWidget {
    Q_OBJECT

  public:
    static constexpr int kTabs = 11;

    explicit FrmMain(session::Bot& bot, QWidget* parent = nullptr);
    ~FrmMain() override;

    // The key that shows panel `Index`, as its tab's tooltip names it.
    static QKeySequence PanelShortcut(int Index);
    // Shows panel `Index` as pressing its tab does, and puts the focus in it.
    void ShowPanel(int Index);

    // The topic picker window, filled anew each time it is loaded.
    void ShowTopicPicker();
    // Re-reads every status text of the session into its label.
    void RefreshStatus();

    std::array<QPushButton*, kTabs> chkTab{};
    std::array<QWidget*, kTabs> pBoxMain{};
    QLabel* lblSite;

    ConnectionPanel* connection;
    ChatsPanel* chats;
    MainGamePanel* mainGame;
    ScrambleListPanel* scrambleList;
    TopicsPanel* topics;
    PlayersPanel* players;
    FontsPanel* fonts;
    OpsPanel* ops;
    OtherPanel* other;
    ConsolePanel* console;
    ErrorsPanel* errors;

    QPointer<TopicPicker> frmTopics;

  protected:
    void closeEvent(QCloseEvent* event) override;

    // The fields the settings file covers, as the window shows them, and back.
    files::SettingsFields CollectSettings() const;
    void ShowSettings(const files::SettingsFields& fields);

  private:
    void chkTab_Click(int Index);

    session::Bot& bot_;
};
