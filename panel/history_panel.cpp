#include "panel/history_panel.h"

#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QShortcut>
#include <QVBoxLayout>

#include "history/chat_lines.h"
#include "panel/accessibility.h"
#include "panel/cp1252.h"
#include "panel/frm_main.h"
#include "panel/widgets.h"

namespace {

QStandardItem* Cell(const QVariant& value) {
    auto* item = new QStandardItem;
    item->setData(value, Qt::DisplayRole);
    item->setEditable(false);
    return item;
}

}  // namespace

StandingsPanel::StandingsPanel(HistoryService& service, QWidget* parent)
    : QWidget(parent), service_(service) {
    setObjectName("pBoxMain11");
    cmbPeriod = new QComboBox(this);
    cmbPeriod->setObjectName("cmbPeriod");
    cmbPeriod->setAccessibleName("Period");
    cmbPeriod->addItems({"Today", "This Week", "This Month", "All Time"});
    cmbPeriod->setCurrentIndex(1);
    cmbTopic = new QComboBox(this);
    cmbTopic->setObjectName("cmbTopic");
    cmbTopic->setAccessibleName("Topic");
    model = new QStandardItemModel(0, 6, this);
    model->setHorizontalHeaderLabels(
        {"Rank", "Player", "Points", "Games Won", "Fastest (s)", "Longest Streak"});
    grdStandings = new QTableView(this);
    grdStandings->setObjectName("grdStandings");
    grdStandings->setAccessibleName("Standings");
    grdStandings->setModel(model);
    grdStandings->setSortingEnabled(true);
    grdStandings->sortByColumn(0, Qt::AscendingOrder);  // by rank until the operator chooses
    grdStandings->setSelectionBehavior(QAbstractItemView::SelectRows);
    grdStandings->verticalHeader()->hide();
    grdStandings->horizontalHeader()->setStretchLastSection(true);

    auto* choices = new QHBoxLayout;
    auto* periodLabel = new QLabel("Period", this);
    periodLabel->setBuddy(cmbPeriod);
    auto* topicLabel = new QLabel("Topic", this);
    topicLabel->setBuddy(cmbTopic);
    choices->addWidget(periodLabel);
    choices->addWidget(cmbPeriod);
    choices->addWidget(topicLabel);
    choices->addWidget(cmbTopic, 1);
    auto* layout = new QVBoxLayout(this);
    auto* title = new QLabel("Standings", this);
    title->setObjectName("lblStandingsTitle");
    QFont font = title->font();
    font.setBold(true);
    title->setFont(font);
    layout->addWidget(title);
    layout->addLayout(choices);
    layout->addWidget(grdStandings, 1);

    refreshSoon_.setSingleShot(true);
    refreshSoon_.setInterval(300);
    connect(&refreshSoon_, &QTimer::timeout, this, [this] {
        if (isVisible()) Refresh();
    });
    connect(&service_, &HistoryService::changed, this, [this] { refreshSoon_.start(); });
    connect(cmbPeriod, &QComboBox::currentIndexChanged, this, [this] { Refresh(); });
    connect(cmbTopic, &QComboBox::currentIndexChanged, this, [this] { Refresh(); });
    Refresh();
}

void StandingsPanel::Refresh() {
    const history::History& record = service_.Record();
    // Topics first, keeping the choice when it is still there.
    const QString chosen = cmbTopic->currentIndex() > 0 ? cmbTopic->currentText() : QString();
    QStringList topics{"All Topics"};
    for (const std::string& t : record.Topics())
        topics << FromCp1252(t);
    if (cmbTopic->count() != topics.size()) {
        const QSignalBlocker block(cmbTopic);
        cmbTopic->clear();
        cmbTopic->addItems(topics);
        cmbTopic->setCurrentIndex(
            chosen.isEmpty() ? 0
                             : static_cast<int>(std::max<qsizetype>(0, topics.indexOf(chosen))));
    }
    std::optional<int> topic;
    if (cmbTopic->currentIndex() > 0) topic = cmbTopic->currentIndex() - 1;
    const auto period = static_cast<history::Period>(cmbPeriod->currentIndex());
    const auto rows = record.Standings(history::PeriodRange(period, record.Now()), topic);

    const int sortColumn = grdStandings->horizontalHeader()->sortIndicatorSection();
    const Qt::SortOrder order = grdStandings->horizontalHeader()->sortIndicatorOrder();
    model->setRowCount(0);
    int rank = 0;
    for (const history::Standing& s : rows) {
        model->appendRow(
            {Cell(++rank), Cell(FromCp1252(s.name)), Cell(qlonglong(s.points)), Cell(s.gamesWon),
             Cell(s.fastest < 0 ? QVariant() : QVariant(static_cast<double>(s.fastest) / 1000.0)),
             Cell(s.longestStreak)});
    }
    if (sortColumn >= 0) model->sort(sortColumn, order);
}

HistoryFileBox::HistoryFileBox(HistoryService& service, game::OperatorDialogs& dialogs,
                               game::StringList& errors, QWidget* parent)
    : QWidget(parent), service_(service) {
    setObjectName("fraHistory");
    lblHistoryFile = MakeLabel(this, "lblHistoryFile", {});
    lblHistoryFile->setWordWrap(true);
    cmdFreshHistory = MakeButton(this, "cmdFreshHistory", "Start Fresh History");
    cmdExportHistory = MakeButton(this, "cmdExportHistory", "Export History CSV");
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdFreshHistory);
    buttons->addWidget(cmdExportHistory);
    buttons->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(lblHistoryFile);
    layout->addLayout(buttons);
    ShowPath();

    connect(cmdFreshHistory, &QPushButton::clicked, this, [this, &dialogs, &errors] {
        if (!dialogs.AskYesNo("Start a new, empty history? The current file is kept under a "
                              "new name.",
                              "Start Fresh History"))
            return;
        QString keptAs, error;
        if (service_.StartFresh(keptAs, error)) {
            dialogs.ShowMessage("The old history was kept as " + ToCp1252(keptAs) + ".",
                                "Start Fresh History", game::MessageKind::Information);
        } else {
            dialogs.ShowMessage(ToCp1252(error), "Error", game::MessageKind::Warning);
            errors.Append(ToCp1252(error));
        }
        ShowPath();
    });
    connect(cmdExportHistory, &QPushButton::clicked, this, [this, &dialogs, &errors] {
        const QFileInfo info(service_.Path());
        const auto path = dialogs.SaveFile({"Export History", "CSV files (*.csv)|*.csv",
                                            ToCp1252(info.absolutePath()), "history.csv"});
        if (!path) return;
        QString error;
        if (!service_.ExportCsv(FromCp1252(*path), error)) {
            dialogs.ShowMessage(ToCp1252(error), "Error", game::MessageKind::Warning);
            errors.Append(ToCp1252(error));
        }
    });
}

void HistoryFileBox::ShowPath() {
    QString text = "History file: " + service_.Path();
    if (!service_.HasFile()) text += " (not in use: " + service_.Error() + ")";
    lblHistoryFile->setText(text);
}

StandingsPanel* AttachHistory(FrmMain& window, HistoryService& service,
                              game::OperatorDialogs& dialogs, game::StringList& errors) {
    QWidget* stack = window.pBoxMain[0]->parentWidget();
    auto* panel = new StandingsPanel(service, stack);
    static_cast<QGridLayout*>(stack->layout())->addWidget(panel, 0, 0);
    panel->setVisible(false);

    QWidget* contents = window.chkTab[0]->parentWidget();
    auto* column = static_cast<QVBoxLayout*>(contents->layout());
    QPushButton* tab = MakeButton(contents, "chkTab11", "Standings");
    tab->setCheckable(true);
    column->insertWidget(column->count() - 1, tab);  // before the stretch
    // Reached from the keyboard like the eleven: the next key on the digit row.
    const QKeySequence keys(Qt::CTRL | Qt::Key_Equal);
    tab->setToolTip(QString("Standings (%1)").arg(keys.toString(QKeySequence::NativeText)));
    SetAccessibleRole(panel, QAccessible::Pane);
    panel->setAccessibleName("Standings");
    auto* shortcut = new QShortcut(keys, &window);
    shortcut->setObjectName("shortcutTab11");
    QObject::connect(shortcut, &QShortcut::activated, tab, [tab, panel] {
        if (!tab->isChecked()) tab->click();
        panel->setFocus(Qt::ShortcutFocusReason);
    });

    // The tabs behave as one group: pressing one releases the others and
    // shows only its panel; releasing the pressed one leaves its panel shown.
    QObject::connect(tab, &QPushButton::clicked, panel, [&window, tab, panel] {
        if (!tab->isChecked()) return;
        for (std::size_t i = 0; i < window.chkTab.size(); ++i) {
            window.chkTab[i]->setChecked(false);
            window.pBoxMain[i]->setVisible(false);
        }
        panel->setVisible(true);
        panel->Refresh();
    });
    // Any other panel shown, by a click or by its shortcut, hides this one.
    for (QPushButton* other : window.chkTab)
        QObject::connect(other, &QPushButton::toggled, panel, [tab, panel](bool on) {
            if (!on) return;
            tab->setChecked(false);
            panel->setVisible(false);
        });

    auto* box = new HistoryFileBox(service, dialogs, errors, window.other);
    auto* otherLayout = static_cast<QVBoxLayout*>(window.other->layout());
    otherLayout->insertWidget(otherLayout->count() - 1, box);  // before the stretch
    QObject::connect(&service, &HistoryService::changed, box, [box] { box->ShowPath(); });
    return panel;
}
