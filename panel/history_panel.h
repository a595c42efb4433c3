// The standings of past games in the window: a twelfth panel, "Standings",
// after the eleven, with a table the operator can sort by any column; and on
// the Other panel the history file's name, a fresh start and a CSV export.
#pragma once

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableView>
#include <QTimer>
#include <QWidget>

#include "game/operator_dialogs.h"
#include "game/string_list.h"
#include "historydb/history_service.h"

class FrmMain;

class StandingsPanel : public QWidget {
    Q_OBJECT

  public:
    StandingsPanel(HistoryService& service, QWidget* parent = nullptr);

    // Reads the standings anew for the chosen period and topic.
    void Refresh();

    QComboBox* cmbPeriod;
    QComboBox* cmbTopic;
    QTableView* grdStandings;
    QStandardItemModel* model;

  private:
    HistoryService& service_;
    QTimer refreshSoon_;  // many events in a burst make one refresh
};

// The Other panel's history controls.
class HistoryFileBox : public QWidget {
    Q_OBJECT

  public:
    HistoryFileBox(HistoryService& service, game::OperatorDialogs& dialogs,
                   game::StringList& errors, QWidget* parent = nullptr);
    void ShowPath();

    QLabel* lblHistoryFile;
    QPushButton* cmdFreshHistory;
    QPushButton* cmdExportHistory;

  private:
    HistoryService& service_;
};

// Adds the Standings tab and panel to the window and the history controls to
// its Other panel. The panel is the window's child; tab "chkTab11".
StandingsPanel* AttachHistory(FrmMain& window, HistoryService& service,
                              game::OperatorDialogs& dialogs, game::StringList& errors);
