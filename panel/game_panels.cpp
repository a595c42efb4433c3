#include "panel/game_panels.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "panel/cp1252.h"
#include "panel/string_list_model.h"

namespace {

QAction* AddItem(QMenu* menu, const QString& name, const QString& caption,
                 std::function<void()> run) {
    QAction* action = menu->addAction(caption);
    action->setObjectName(name);
    QObject::connect(action, &QAction::triggered, menu, [run] { run(); });
    return action;
}

QMenu* MakeMenu(QWidget* parent, const QString& name, const QString& title) {
    auto* menu = new QMenu(title, parent);
    menu->setObjectName(name);
    return menu;
}

}  // namespace

MainGamePanel::MainGamePanel(session::Bot& bot, QWidget* parent) : QWidget(parent), bot_(bot) {
    setObjectName("pBoxMain2");
    const char* modes[] = {"Scramble Mode", "Word Blank Mode", "Mixed Mode"};
    const char* tips[] = {"Only words will be scrambled", "Only words will be blanked",
                          "randomly makes it blank or scramble"};
    auto* modeBox = new QVBoxLayout;
    for (int i = 0; i < 3; ++i) {
        optMode[static_cast<std::size_t>(i)] = new QRadioButton(modes[i], this);
        QRadioButton* option = optMode[static_cast<std::size_t>(i)];
        option->setObjectName(QString("optMode%1").arg(i));
        option->setToolTip(tips[i]);
        modeBox->addWidget(option);
        connect(option, &QRadioButton::clicked, this,
                [this, i] { bot_.game.Modes().optMode_Click(i); });
    }
    cmdAutoSendOn = MakeButton(this, "cmdAutoSendOn", "Auto Send On");
    cmdAutoSendOff = MakeButton(this, "cmdAutoSendOff", "Auto Send Off");
    cmdNewGame = MakeButton(this, "cmdNewGame", "New Game");
    cmdNewTopic = MakeButton(this, "cmdNewTopic", "New Topic");
    cmdSkip = MakeButton(this, "cmdSkip", "Skip");
    cmdHint = MakeButton(this, "cmdHint", "Hint");
    cmdAnswer = MakeButton(this, "cmdAnswer", "Answer");
    txtWord = MakeField(this, "txtWord", "", 2000, "Word");
    txtHint = MakeField(this, "txtHint", "", 500, "Hint (Optional)");
    cmdManualScramble = MakeButton(this, "cmdManualScramble", "Scramble");
    cmdManualWordBlank = MakeButton(this, "cmdManualWordBlank", "Word Blank");
    txtSendPause =
        MakeField(this, "txtSendPause", "10", 3, "Msg Delay (seconds)", "Delay for next word");
    txtScoreLimit = MakeField(this, "txtScoreLimit", "15", 4, "Score Limit",
                              "Score players need to achive to win");
    txtIdleTime = MakeField(this, "txtIdleTime", "30", 3, "Idle Timer (seconds)",
                            "The idle time skips the word after the given amount of time");
    cmdHelp1 = MakeButton(this, "cmdHelp1", "?");

    auto* play = new QGridLayout;
    play->addWidget(cmdAutoSendOn, 0, 0);
    play->addWidget(cmdAutoSendOff, 0, 1);
    play->addWidget(cmdNewGame, 1, 0);
    play->addWidget(cmdNewTopic, 1, 1);
    auto* round = new QHBoxLayout;
    round->addWidget(cmdSkip);
    round->addWidget(cmdHint);
    round->addWidget(cmdAnswer);
    auto* top = new QHBoxLayout;
    top->addLayout(modeBox);
    top->addLayout(play);

    auto* manual = new QGroupBox(this);
    auto* manualLayout = new QFormLayout(manual);
    manualLayout->addRow(MakeLabel(manual, "lblMisc33", "Manual Send"));
    manualLayout->addRow("Word", txtWord);
    manualLayout->addRow("Hint (Optional)", txtHint);
    auto* manualButtons = new QHBoxLayout;
    manualButtons->addWidget(cmdManualScramble);
    manualButtons->addWidget(cmdManualWordBlank);
    manualLayout->addRow(manualButtons);

    auto* timings = new QFormLayout;
    timings->addRow("Msg Delay (seconds)", txtSendPause);
    timings->addRow("Score Limit", txtScoreLimit);
    timings->addRow("Idle Timer (seconds)", txtIdleTime);

    auto* title = new QHBoxLayout;
    title->addWidget(MakeTitle(this, 14, "Main Game"));
    title->addStretch();
    title->addWidget(cmdHelp1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(title);
    layout->addLayout(top);
    layout->addLayout(round);
    layout->addWidget(manual);
    layout->addLayout(timings);
    layout->addStretch();

    game::Game& g = bot_.game;
    connect(cmdAutoSendOn, &QPushButton::clicked, this, [&g] { g.cmdAutoSendOn_Click(); });
    connect(cmdAutoSendOff, &QPushButton::clicked, this, [&g] { g.cmdAutoSendOff_Click(); });
    connect(cmdNewGame, &QPushButton::clicked, this, [&g] { g.cmdNewGame_Click(); });
    connect(cmdNewTopic, &QPushButton::clicked, this, [&g] { g.cmdNewTopic_Click(); });
    connect(cmdSkip, &QPushButton::clicked, this, [&g] { g.cmdSkip_Click(); });
    connect(cmdHint, &QPushButton::clicked, this, [&g] { g.cmdHint_Click(); });
    connect(cmdAnswer, &QPushButton::clicked, this, [&g] { g.cmdAnswer_Click(); });
    auto manualSend = [this](bool blank) {
        bot_.editing.ManualSend(ToCp1252(txtWord->text()), ToCp1252(txtHint->text()), blank);
        ShowMode();
    };
    connect(cmdManualScramble, &QPushButton::clicked, this, [manualSend] { manualSend(false); });
    connect(cmdManualWordBlank, &QPushButton::clicked, this, [manualSend] { manualSend(true); });
    auto check = [](FieldEdit* field, auto apply) {
        QObject::connect(field, &FieldEdit::focusLost, field, [field, apply] {
            field->setText(FromCp1252(apply(ToCp1252(field->text()))));
        });
    };
    session::OperatorActions& a = bot_.actions;
    check(txtSendPause, [&a](const std::string& t) { return a.txtSendPause_LostFocus(t); });
    check(txtScoreLimit, [&a](const std::string& t) { return a.txtScoreLimit_LostFocus(t); });
    check(txtIdleTime, [&a](const std::string& t) { return a.txtIdleTime_LostFocus(t); });
    connect(cmdHelp1, &QPushButton::clicked, this, [&a] { a.cmdHelp_Click(1); });

    // Scramble Mode is selected at start.
    bot_.game.Modes().optMode_Click(0);
    ShowMode();
}

void MainGamePanel::ShowMode() {
    optMode[static_cast<std::size_t>(bot_.game.Modes().GetGameMode())]->setChecked(true);
}

ScrambleListPanel::ScrambleListPanel(session::Bot& bot, QWidget* parent)
    : QWidget(parent), bot_(bot) {
    setObjectName("pBoxMain3");
    lblCurrentTopic = MakeLabel(this, "lblCurrentTopic", "None");
    lstWords = MakeList(this, "lstWords", "Words");
    (new StringListModel(bot.game.Lists().lstWords(), this))->Attach(lstWords);
    txtManualAddWord = MakeField(this, "txtManualAddWord", "", 50, "Add directly to list.");
    txtManualAddHint = MakeField(this, "txtManualAddHint", "", 200, "Hint");
    cmdAddTopic = MakeButton(this, "cmdAddTopic", "Add a Topic");
    cmdClearList = MakeButton(this, "cmdClearList", "Clear List");
    cmdRandomize = MakeButton(this, "cmdRandomize", "Randomize");
    cmdSaveList = MakeButton(this, "cmdSaveList", "Save List");
    cmdHelp0 = MakeButton(this, "cmdHelp0", "?");

    auto* title = new QHBoxLayout;
    title->addWidget(MakeTitle(this, 31, "Scramble List"));
    title->addStretch();
    title->addWidget(cmdHelp0);
    auto* topic = new QHBoxLayout;
    topic->addWidget(new QLabel("Current Topic:", this));
    topic->addWidget(lblCurrentTopic, 1);
    auto* add = new QHBoxLayout;
    add->addWidget(txtManualAddWord, 2);
    add->addWidget(txtManualAddHint, 3);
    auto* buttons = new QHBoxLayout;
    for (QPushButton* b : {cmdAddTopic, cmdClearList, cmdRandomize, cmdSaveList})
        buttons->addWidget(b);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(title);
    layout->addWidget(MakeNote(this, 24, "This is the list of words to be used for Auto Send."));
    layout->addLayout(topic);
    layout->addWidget(new QLabel("Words", this));
    layout->addWidget(lstWords, 1);
    layout->addWidget(MakeNote(this, 28, "Right-Click list for more options."));
    layout->addWidget(new QLabel("Add directly to list.", this));
    layout->addLayout(add);
    layout->addLayout(buttons);

    game::Game& g = bot_.game;
    game::WordLists& lists = g.Lists();
    session::ListEditing& e = bot_.editing;
    lists.SetTopicLabelObserver(
        [this](const std::string& text) { lblCurrentTopic->setText(FromCp1252(text)); });
    connect(cmdAddTopic, &QPushButton::clicked, this, [&lists] { lists.cmdAddTopic_Click(); });
    connect(cmdClearList, &QPushButton::clicked, this, [&lists] { lists.cmdClearList_Click(); });
    connect(cmdRandomize, &QPushButton::clicked, this,
            [&lists, &bot] { lists.cmdRandomize_Click(bot.random); });
    connect(cmdSaveList, &QPushButton::clicked, this, &ScrambleListPanel::saveListRequested);
    connect(cmdHelp0, &QPushButton::clicked, this, [&bot] { bot.actions.cmdHelp_Click(0); });
    connect(txtManualAddWord, &QLineEdit::returnPressed, this, &ScrambleListPanel::AddDirectly);
    connect(txtManualAddHint, &QLineEdit::returnPressed, this, &ScrambleListPanel::AddDirectly);

    mnuScramble = MakeMenu(this, "mnuScramble", "Scramble List");
    AddItem(mnuScramble, "mnuAddScrambleTopic", "Add Topic",
            [&lists] { lists.cmdAddTopic_Click(); });
    AddItem(mnuScramble, "mnuAddScramble", "Add Word", [&e] { e.mnuAddScramble_Click(); });
    AddItem(mnuScramble, "mnuRemoveScramble", "Remove Word", [&e] { e.mnuRemoveScramble_Click(); });
    AddItem(mnuScramble, "mnuEditScramble", "Edit Word", [&e] { e.mnuEditScramble_Click(); });
    AddItem(mnuScramble, "mnuRandomize", "Randomize",
            [&lists, &bot] { lists.cmdRandomize_Click(bot.random); });
    AddItem(mnuScramble, "mnuAutoSendOn", "Auto-Send On", [&g] { g.cmdAutoSendOn_Click(); });
    AddItem(mnuScramble, "mnuAutoSendOff", "Auto-Send Off", [&g] { g.cmdAutoSendOff_Click(); });
    AddItem(mnuScramble, "mnuSaveList", "Save List", [this] { emit saveListRequested(); });
    AddItem(mnuScramble, "mnuClearWordList", "Clear List",
            [&lists] { lists.cmdClearList_Click(); });
    AttachPopup(lstWords, mnuScramble);
}

void ScrambleListPanel::AddDirectly() {
    bot_.editing.AddDirectly(ToCp1252(txtManualAddWord->text()),
                             ToCp1252(txtManualAddHint->text()));
    txtManualAddWord->clear();
    txtManualAddHint->clear();
}

TopicsPanel::TopicsPanel(session::Bot& bot, QWidget* parent) : QWidget(parent), bot_(bot) {
    setObjectName("pBoxMain4");
    lstData = MakeList(this, "lstData", "Loaded Topics");
    (new StringListModel(bot.game.Lists().lstData(), this))->Attach(lstData);
    cmdLoadTopic = MakeButton(this, "cmdLoadTopic", "Load Topic");
    cmdMerge = MakeButton(this, "cmdMerge", "Merge Topics");
    cmdSendToList = MakeButton(this, "cmdSendToList", "Send to List");
    cmdClearAll = MakeButton(this, "cmdClearAll", "Clear All");
    cmdHelp2 = MakeButton(this, "cmdHelp2", "?");

    auto* title = new QHBoxLayout;
    title->addWidget(MakeTitle(this, 10, "Topics"));
    title->addStretch();
    title->addWidget(cmdHelp2);
    auto* buttons = new QHBoxLayout;
    for (QPushButton* b : {cmdLoadTopic, cmdMerge, cmdSendToList, cmdClearAll})
        buttons->addWidget(b);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(title);
    layout->addWidget(MakeNote(
        this, 23, "This is where you load topics to be used in the Scramble List section."));
    layout->addWidget(new QLabel("Loaded Topics", this));
    layout->addWidget(lstData, 1);
    layout->addWidget(MakeNote(this, 13, "Right-Click list for more options."));
    layout->addLayout(buttons);

    game::WordLists& lists = bot_.game.Lists();
    connect(cmdLoadTopic, &QPushButton::clicked, this, &TopicsPanel::loadTopicRequested);
    connect(cmdMerge, &QPushButton::clicked, this, &TopicsPanel::mergeRequested);
    connect(cmdSendToList, &QPushButton::clicked, this, [&lists] { lists.cmdSendToList_Click(); });
    connect(cmdClearAll, &QPushButton::clicked, this, [&lists] { lists.cmdClearAll_Click(); });
    connect(cmdHelp2, &QPushButton::clicked, this, [&bot] { bot.actions.cmdHelp_Click(2); });

    mnuTopics = MakeMenu(this, "mnuTopics", "Topics");
    AddItem(mnuTopics, "mnuLoadTopic", "Load Topic", [this] { emit loadTopicRequested(); });
    AddItem(mnuTopics, "mnuRemoveTopic", "Remove Topic", [&lists] {
        const int row = lists.lstData().Selected();
        if (row >= 0) lists.RemoveTopic(lists.lstData().At(row));
    });
    AddItem(mnuTopics, "mnuMergeTopics", "Merge Topics", [this] { emit mergeRequested(); });
    AddItem(mnuTopics, "mnuSendTopicToList", "Send Topic to List",
            [&lists] { lists.cmdSendToList_Click(); });
    AddItem(mnuTopics, "mnuClearAllTopics", "Clear All", [&lists] { lists.cmdClearAll_Click(); });
    AttachPopup(lstData, mnuTopics);
}

PlayersPanel::PlayersPanel(session::Bot& bot, QWidget* parent) : QWidget(parent) {
    setObjectName("pBoxMain5");
    lstPlayers = MakeList(this, "lstPlayers", "Players");
    (new StringListModel(bot.game.Scores().lstPlayers(), this))->Attach(lstPlayers);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(MakeTitle(this, 25, "Players"));
    layout->addWidget(lstPlayers, 1);
    layout->addWidget(MakeNote(this, 26,
                               "Right-click the list to either remove a player from the game or "
                               "edit their score. Removing a player removes their score."));

    session::ListEditing& e = bot.editing;
    mnuPlayers = MakeMenu(this, "mnuPlayers", "Players/Scores");
    AddItem(mnuPlayers, "mnuAddPlayer", "Add Player", [&e] { e.mnuAddPlayer_Click(); });
    AddItem(mnuPlayers, "mnuRemovePlayer", "Remove Player", [&e] { e.mnuRemovePlayer_Click(); });
    AddItem(mnuPlayers, "mnuEditScore", "Edit Score", [&e] { e.mnuEditScore_Click(); });
    AttachPopup(lstPlayers, mnuPlayers);
}
