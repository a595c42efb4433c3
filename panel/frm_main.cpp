#include "panel/frm_main.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "game/product.h"
#include "panel/cp1252.h"
#include "panel/topic_picker.h"

FrmMain::FrmMain(session::Bot& bot, QWidget* parent) : QWidget(parent), bot_(bot) {
    setObjectName("frmMain");
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
        tabColumn->addWidget(tab);
        chkTab[static_cast<std::size_t>(i)] = tab;
        connect(tab, &QPushButton::clicked, this, [this, i] { chkTab_Click(i); });
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
    for (QWidget* panel : pBoxMain) {
        panels->addWidget(panel, 0, 0);
        panel->setVisible(panel == connection);
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
    connection->txtSN->setText(FromCp1252(f.txtSN));
    connection->cmbServers->setEditText(FromCp1252(f.cmbServers));
    connection->txtPort->setText(FromCp1252(f.txtPort));
    chats->txtChat->setText(FromCp1252(f.txtChat));
    chats->txtEx->setText(FromCp1252(f.txtEx));
    mainGame->txtSendPause->setText(FromCp1252(f.txtSendPause));
    mainGame->txtScoreLimit->setText(FromCp1252(f.txtScoreLimit));
    mainGame->txtIdleTime->setText(FromCp1252(f.txtIdleTime));
    other->txtUser->setText(FromCp1252(f.txtUser));
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
