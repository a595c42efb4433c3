// The panels of the game: Main Game, Scramble List, Topics, Players/Scores.
#pragma once

#include <QMenu>
#include <QRadioButton>
#include <QWidget>
#include <array>

#include "panel/widgets.h"
#include "session/bot.h"

class MainGamePanel : public QWidget {
    Q_OBJECT

  public:
    MainGamePanel(session::Bot& bot, QWidget* parent);

    std::array<QRadioButton*, 3> optMode;
    QPushButton* cmdAutoSendOn;
    QPushButton* cmdAutoSendOff;
    QPushButton* cmdNewGame;
    QPushButton* cmdNewTopic;
    QPushButton* cmdSkip;
    QPushButton* cmdHint;
    QPushButton* cmdAnswer;
    FieldEdit* txtWord;
    FieldEdit* txtHint;
    QPushButton* cmdManualScramble;
    QPushButton* cmdManualWordBlank;
    FieldEdit* txtSendPause;
    FieldEdit* txtScoreLimit;
    FieldEdit* txtIdleTime;
    QPushButton* cmdHelp1;

    // Shows the mode the game has, as selecting its option does.
    void ShowMode();

  private:
    session::Bot& bot_;
};

class ScrambleListPanel : public QWidget {
    Q_OBJECT

  public:
    ScrambleListPanel(session::Bot& bot, QWidget* parent);

    QLabel* lblCurrentTopic;
    QListView* lstWords;
    FieldEdit* txtManualAddWord;
    FieldEdit* txtManualAddHint;
    QPushButton* cmdAddTopic;
    QPushButton* cmdClearList;
    QPushButton* cmdRandomize;
    QPushButton* cmdSaveList;
    QPushButton* cmdHelp0;
    QMenu* mnuScramble;

  signals:
    void saveListRequested();

  private:
    void AddDirectly();
    session::Bot& bot_;
};

class TopicsPanel : public QWidget {
    Q_OBJECT

  public:
    TopicsPanel(session::Bot& bot, QWidget* parent);

    QListView* lstData;
    QPushButton* cmdLoadTopic;
    QPushButton* cmdMerge;
    QPushButton* cmdSendToList;
    QPushButton* cmdClearAll;
    QPushButton* cmdHelp2;
    QMenu* mnuTopics;

  signals:
    void loadTopicRequested();
    void mergeRequested();

  private:
    session::Bot& bot_;
};

class PlayersPanel : public QWidget {
    Q_OBJECT

  public:
    PlayersPanel(session::Bot& bot, QWidget* parent);

    QListView* lstPlayers;
    QMenu* mnuPlayers;
};
