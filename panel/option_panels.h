// The panels of options and records: Fonts, Ops/Disallows, Other, Errors.
#pragma once

#include <QMenu>
#include <QWidget>

#include "panel/widgets.h"
#include "session/bot.h"

class FontsPanel : public QWidget {
    Q_OBJECT

  public:
    FontsPanel(session::Bot& bot, QWidget* parent);
    // Puts the style's fields into the controls.
    void ShowFields();

    FieldEdit* txtFontType;
    FieldEdit* txtFontColor;
    FieldEdit* txtBGColor;
    QLabel* lblHexList;
    QCheckBox* chkBold;
    QCheckBox* chkItalics;
    QCheckBox* chkUnderline;
    QCheckBox* chkStrike;
    QPushButton* cmdSetFont;
    QPushButton* cmdResetFont;

  private:
    void TakeFields();
    session::Bot& bot_;
};

class OpsPanel : public QWidget {
    Q_OBJECT

  public:
    OpsPanel(session::Bot& bot, QWidget* parent);

    QListView* lstOps;
    FieldEdit* txtAddOp;
    QListView* lstDisallows;
    FieldEdit* txtAddDisallow;
    QMenu* mnuOp;
    QMenu* mnuDisallow;
};

class OtherPanel : public QWidget {
    Q_OBJECT

  public:
    OtherPanel(session::Bot& bot, QWidget* parent);

    QCheckBox* chkLCase;
    QCheckBox* chkNewTopic;
    QCheckBox* chkTopicVote;
    QCheckBox* chkHint;
    FieldEdit* txtUser;
    QPushButton* cmdSetUser;
    QPushButton* cmdSaveSettings;
    QPushButton* cmdLoadSettings;
    QPushButton* cmdCredits;

  signals:
    void saveSettingsRequested();
    void loadSettingsRequested();
};

class ErrorsPanel : public QWidget {
    Q_OBJECT

  public:
    ErrorsPanel(session::Bot& bot, QWidget* parent);

    QListView* lstErrors;
    QPushButton* cmdClearErrors;
};
