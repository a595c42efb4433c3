#include "panel/frm_main.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeySequence>
#include <QShortcut>
#include <QVBoxLayout>

#include "game/product.h"
#include "panel/accessibility.h"
#include "panel/cp1252.h"
#include "panel/topic_picker.h"

QKeySequence FrmMain::PanelShortcut(int Index) {
    // Ctrl+1 to Ctrl+9, Ctrl+0 and Ctrl+-: the digit row from left to right.
    static constexpr Qt::Key keys[kTabs] = {Qt::Key_1, Qt::Key_2, Qt::Key_3,    Qt::Key_4,
                                            Qt::Key_5, Qt::Key_6, Qt::Key_7,    Qt::Key_8,
                                            Qt::Key_9, Qt::Key_0, Qt::Key_Minus};
    return QKeySequence(Qt::CTRL | keys[Index]);
}

FrmMain::FrmMain(session::Bot& bot, QWidget* parent) : QWidget(parent), bot_(bot) {
    InstallAccessibleRoles();
    setObjectName("frmMain");
    // Tools that look for the program's window find it by this role; a plain
    // widget would report itself as a filler.
    SetAccessibleRole(this, QAccessible::Window);
    setWindowTitle(QString::fromLatin1(game::kProductTitle.data(),
                                       static_cast<qsizetype>(game::kProductTitle.size())));

    auto* contents = new QGroupBox("Contents", this);
    contents->setObjectName("fraContents");
    auto* tabColumn = new QVBoxLayout(contents);
    const char* captions[kTabs] = {"Connection", "Chats",          "Main Game", "Scramble List",
                                   "Topics",     "Players/Scores", "Fonts",     "Ops/Disallows",
                                   "Other",      "Console",        "Errors"};
    for (int i = 0; i < kTabs; ++i) {
        QPushButton* tab = MakeButton(contents, QString("chkTab%1").arg(i), captions[i]);
        tab->setCheckable(true);
        tab->setToolTip(QString("%1 (%2)").arg(
            captions[i], PanelShortcut(i).toString(QKeySequence::NativeText)));
        tabColumn->addWidget(tab);
        chkTab[static_cast<std::size_t>(i)] = tab;
        connect(tab, &QPushButton::clicked, this, [this, i] { chkTab_Click(i); });
        auto* shortcut = new QShortcut(PanelShortcut(i), this);
        shortcut->setObjectName(QString("shortcutTab%1").arg(i));
        connect(shortcut, &QShortcut::activated, this, [this, i] { ShowPanel(i); });
    }
    tabColumn->addStretch();

    auto* stack = new QWidget(this);
    auto* panels = new QGridLayout(stack);
    panels->setContentsMargins(0, 0, 0, 0);
    connection = new ConnectionPanel(bot, stack);
    chats = new ChatsPanel(bot, stack);
    mainGame = new MainGamePanel(bot, stack);
    scrambleList = new ScrambleListPanel(bot, stack);
    topics = new TopicsPanel(bot, stack);
    players = new PlayersPanel(bot, stack);
    fonts = new FontsPanel(bot, stack);
    ops = new OpsPanel(bot, stack);
    other = new OtherPanel(bot, stack);
    console = new ConsolePanel(bot, stack);
    errors = new ErrorsPanel(bot, stack);
    pBoxMain = {connection, chats, mainGame, scrambleList, topics, players,
                fonts,      ops,   other,    console,      errors};
    // Every panel takes the same place; only the one shown is visible. The
    // Connection panel is shown before any tab is pressed.
    for (int i = 0; i < kTabs; ++i) {
        QWidget* panel = pBoxMain[static_cast<std::size_t>(i)];
        panels->addWidget(panel, 0, 0);
        panel->setVisible(panel == connection);
        SetAccessibleRole(panel, QAccessible::Pane);
        panel->setAccessibleName(captions[i]);
    }

    const QString site = QString::fromLatin1(game::kProductSite.data(),
                                             static_cast<qsizetype>(game::kProductSite.size()));
    lblSite = MakeLink(this, "lblSite", site, [&bot] { bot.actions.lblSite_Click(); });

    auto* body = new QHBoxLayout;
    body->addWidget(contents);
    body->addWidget(stack, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(body, 1);
    layout->addWidget(lblSite, 0, Qt::AlignRight);
    resize(780, 560);

    bot_.session.SetChangeObserver([this] { RefreshStatus(); });

    files::TopicFiles& topicFiles = bot_.topicFiles;
    connect(topics, &TopicsPanel::loadTopicRequested, this,
            [&topicFiles] { topicFiles.cmdLoadTopic_Click(); });
    connect(topics, &TopicsPanel::mergeRequested, this,
            [&topicFiles] { topicFiles.cmdMerge_Click(); });
    connect(scrambleList, &ScrambleListPanel::saveListRequested, this,
            [&topicFiles] { topicFiles.cmdSaveList_Click(); });
    connect(other, &OtherPanel::saveSettingsRequested, this,
            [this] { bot_.settings.cmdSaveSettings_Click(CollectSettings()); });
    connect(other, &OtherPanel::loadSettingsRequested, this,
            [this] { ShowSettings(bot_.settings.cmdLoadSettings_Click(CollectSettings())); });
}

files::SettingsFields FrmMain::CollectSettings() const {
    files::SettingsFields f;
    f.txtSN = ToCp1252(connection->txtSN->text());
    f.cmbServers = ToCp1252(connection->cmbServers->currentText());
    f.txtPort = ToCp1252(connection->txtPort->text());
    f.txtChat = ToCp1252(chats->txtChat->text());
    f.txtEx = ToCp1252(chats->txtEx->text());
    f.txtSendPause = ToCp1252(mainGame->txtSendPause->text());
    f.txtScoreLimit = ToCp1252(mainGame->txtScoreLimit->text());
    f.txtIdleTime = ToCp1252(mainGame->txtIdleTime->text());
    f.txtUser = ToCp1252(other->txtUser->text());
    f.chkFullCaps = connection->chkFullCaps->isChecked();
    f.chkLock = connection->chkLock->isChecked();
    f.chkReconnect = connection->chkReconnect->isChecked();
    return f;
}

void FrmMain::ShowSettings(const files::SettingsFields& f) {
    // Setting texts by program runs none of the fields' checks.
    // A value from the file shows whole, even past what the field lets the
    // operator type ("12.5" in a three-character field).
    connection->txtSN->ShowText(FromCp1252(f.txtSN));
    connection->cmbServers->setEditText(FromCp1252(f.cmbServers));
    connection->txtPort->ShowText(FromCp1252(f.txtPort));
    chats->txtChat->ShowText(FromCp1252(f.txtChat));
    chats->txtEx->ShowText(FromCp1252(f.txtEx));
    mainGame->txtSendPause->ShowText(FromCp1252(f.txtSendPause));
    mainGame->txtScoreLimit->ShowText(FromCp1252(f.txtScoreLimit));
    mainGame->txtIdleTime->ShowText(FromCp1252(f.txtIdleTime));
    other->txtUser->ShowText(FromCp1252(f.txtUser));
    connection->chkFullCaps->setChecked(f.chkFullCaps);
    connection->chkLock->setChecked(f.chkLock);
    connection->chkReconnect->setChecked(f.chkReconnect);
    other->chkLCase->setChecked(bot_.game.chkLCase);
    other->chkNewTopic->setChecked(bot_.game.chkNewTopic);
    other->chkHint->setChecked(bot_.commands.chkHint);
    fonts->ShowFields();
    mainGame->ShowMode();
}

FrmMain::~FrmMain() {
    bot_.session.SetChangeObserver(nullptr);
    bot_.console.SetObserver(nullptr);
    bot_.game.Lists().SetTopicLabelObserver(nullptr);
    delete frmTopics;
}

void FrmMain::chkTab_Click(int Index) {
    // A click that releases the pressed button leaves its panel shown.
    if (!chkTab[static_cast<std::size_t>(Index)]->isChecked()) return;
    for (int i = 0; i < kTabs; ++i) {
        if (i == Index) continue;
        chkTab[static_cast<std::size_t>(i)]->setChecked(false);
        pBoxMain[static_cast<std::size_t>(i)]->setVisible(false);
    }
    pBoxMain[static_cast<std::size_t>(Index)]->setVisible(true);
}

void FrmMain::ShowPanel(int Index) {
    chkTab[static_cast<std::size_t>(Index)]->setChecked(true);
    chkTab_Click(Index);
    // The focus goes to the panel's first control, so the keys that opened
    // it go on working there.
    QWidget* panel = pBoxMain[static_cast<std::size_t>(Index)];
    for (QWidget* w = panel->nextInFocusChain(); w && w != panel; w = w->nextInFocusChain()) {
        if (!panel->isAncestorOf(w)) continue;
        if (w->isEnabled() && w->isVisibleTo(panel) && (w->focusPolicy() & Qt::TabFocus)) {
            w->setFocus(Qt::ShortcutFocusReason);
            return;
        }
    }
}

void FrmMain::RefreshStatus() {
    connection->Refresh();
    chats->Refresh();
    console->Refresh();
}

void FrmMain::ShowTopicPicker() {
    if (!frmTopics) frmTopics = new TopicPicker(bot_);
    frmTopics->Load();
    frmTopics->show();
    frmTopics->raise();
}

void FrmMain::closeEvent(QCloseEvent* event) {
    // Closing the window ends the program at once, game or not.
    event->accept();
    QApplication::quit();
}
