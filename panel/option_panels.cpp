#include "panel/option_panels.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

#include "panel/cp1252.h"
#include "panel/string_list_model.h"

FontsPanel::FontsPanel(session::Bot& bot, QWidget* parent) : QWidget(parent), bot_(bot) {
    setObjectName("pBoxMain6");
    txtFontType = MakeField(this, "txtFontType", "", 0, "Font Type");
    txtFontColor = MakeField(this, "txtFontColor", "", 0, "Font Color");
    txtBGColor = MakeField(this, "txtBGColor", "", 0, "Background Color");
    lblHexList = MakeLink(this, "lblHexList", "Valid Hex Color List",
                          [&bot] { bot.actions.lblHexList_Click(); });
    chkBold = MakeCheck(this, "chkBold", "Bold");
    chkItalics = MakeCheck(this, "chkItalics", "Italics");
    chkUnderline = MakeCheck(this, "chkUnderline", "Underline");
    chkStrike = MakeCheck(this, "chkStrike", "Strikethrough");
    cmdSetFont = MakeButton(this, "cmdSetFont", "Set Font");
    cmdResetFont = MakeButton(this, "cmdResetFont", "Reset Font");

    auto* form = new QFormLayout;
    form->addRow("Font Type", txtFontType);
    form->addRow("Font Color", txtFontColor);
    form->addRow("Background Color", txtBGColor);
    auto* styles = new QHBoxLayout;
    for (QCheckBox* c : {chkBold, chkItalics, chkUnderline, chkStrike})
        styles->addWidget(c);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdSetFont);
    buttons->addWidget(cmdResetFont);
    buttons->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(MakeTitle(this, 19, "Fonts"));
    layout->addLayout(form);
    layout->addWidget(lblHexList);
    layout->addLayout(styles);
    layout->addLayout(buttons);
    layout->addStretch();

    ShowFields();
    // The style's fields are what the boxes show at every moment, so Save
    // Settings writes the boxes and a load starts from them; Set Font only
    // applies them to the bot's lines.
    for (FieldEdit* field : {txtFontType, txtFontColor, txtBGColor})
        connect(field, &QLineEdit::textChanged, this, &FontsPanel::TakeFields);
    for (QCheckBox* check : {chkBold, chkItalics, chkUnderline, chkStrike})
        connect(check, &QCheckBox::toggled, this, &FontsPanel::TakeFields);
    connect(cmdSetFont, &QPushButton::clicked, this,
            [this] { bot_.game.Style().cmdSetFont_Click(); });
    connect(cmdResetFont, &QPushButton::clicked, this, [this] {
        bot_.game.Style().cmdResetFont_Click();
        ShowFields();
    });
}

void FontsPanel::ShowFields() {
    // A copy: each box written below writes the fields back as the boxes
    // stand at that moment.
    const game::FontFields f = bot_.game.Style().fields;
    txtFontType->setText(FromCp1252(f.txtFontType));
    txtFontColor->setText(FromCp1252(f.txtFontColor));
    txtBGColor->setText(FromCp1252(f.txtBGColor));
    chkBold->setChecked(f.chkBold);
    chkItalics->setChecked(f.chkItalics);
    chkUnderline->setChecked(f.chkUnderline);
    chkStrike->setChecked(f.chkStrike);
}

void FontsPanel::TakeFields() {
    game::FontFields& f = bot_.game.Style().fields;
    f.txtFontType = ToCp1252(txtFontType->text());
    f.txtFontColor = ToCp1252(txtFontColor->text());
    f.txtBGColor = ToCp1252(txtBGColor->text());
    f.chkBold = chkBold->isChecked();
    f.chkItalics = chkItalics->isChecked();
    f.chkUnderline = chkUnderline->isChecked();
    f.chkStrike = chkStrike->isChecked();
}

OpsPanel::OpsPanel(session::Bot& bot, QWidget* parent) : QWidget(parent) {
    setObjectName("pBoxMain7");
    lstOps = MakeList(this, "lstOps", "Ops");
    (new StringListModel(bot.commands.Ops().Rows(), this))->Attach(lstOps);
    txtAddOp = MakeField(this, "txtAddOp", "", 0, "Add Op");
    lstDisallows = MakeList(this, "lstDisallows", "Disallows");
    (new StringListModel(bot.commands.Disallows().Rows(), this))->Attach(lstDisallows);
    txtAddDisallow = MakeField(this, "txtAddDisallow", "", 0, "Add Disallow");

    auto* grid = new QGridLayout;
    grid->addWidget(new QLabel("Ops", this), 0, 0);
    grid->addWidget(new QLabel("Disallows", this), 0, 1);
    grid->addWidget(lstOps, 1, 0);
    grid->addWidget(lstDisallows, 1, 1);
    grid->addWidget(txtAddOp, 2, 0);
    grid->addWidget(txtAddDisallow, 2, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(MakeTitle(this, 12, "Ops/disallows"));
    layout->addLayout(grid, 1);
    layout->addWidget(MakeNote(this, 34, "Right-Cilck lists to Add/Remove users."));
    layout->addWidget(
        MakeNote(this, 38,
                 "Ops should type '/help' to see commands. There is a 10 second pause "
                 "in between ccom chatsends to prevent rate."));
    layout->addWidget(
        MakeNote(this, 37,
                 "Disallowed users will not be able to participate in scramble games, "
                 "as well as use ccoms if they are oped."));

    session::ListEditing& e = bot.editing;
    auto addOp = [this, &e] {
        e.AddOp(ToCp1252(txtAddOp->text()));
        txtAddOp->clear();
    };
    auto addDisallow = [this, &e] {
        e.AddDisallow(ToCp1252(txtAddDisallow->text()));
        txtAddDisallow->clear();
    };
    connect(txtAddOp, &QLineEdit::returnPressed, this, addOp);
    connect(txtAddDisallow, &QLineEdit::returnPressed, this, addDisallow);

    mnuOp = new QMenu("Ops", this);
    mnuOp->setObjectName("mnuOp");
    mnuOp->addAction("Add Op", this, addOp)->setObjectName("mnuAddOp");
    mnuOp->addAction("Remove Op", this, [&e] { e.mnuRemoveOp_Click(); })
        ->setObjectName("mnuRemoveOp");
    AttachPopup(lstOps, mnuOp);
    mnuDisallow = new QMenu("Disallow", this);
    mnuDisallow->setObjectName("mnuDisallow");
    mnuDisallow->addAction("Add Disallow", this, addDisallow)->setObjectName("mnuAddDis");
    mnuDisallow->addAction("Remove Disallow", this, [&e] { e.mnuRemoveDis_Click(); })
        ->setObjectName("mnuRemoveDis");
    AttachPopup(lstDisallows, mnuDisallow);
}

OtherPanel::OtherPanel(session::Bot& bot, QWidget* parent) : QWidget(parent) {
    setObjectName("pBoxMain8");
    const QString voteTip =
        "This makes it so when you choose a new topic through the chat it goes by votes instead "
        "of first response";
    chkLCase = MakeCheck(this, "chkLCase", "Force words into lower case");
    chkNewTopic = MakeCheck(this, "chkNewTopic", "Change topics every game", false, voteTip);
    chkTopicVote = MakeCheck(this, "chkTopicVote", "Make new topics a vote", false, voteTip);
    chkTopicVote->setEnabled(false);
    chkHint = MakeCheck(this, "chkHint", "Disable Hint Ccom", false,
                        "This disables the ability for users to use the hint command");
    txtUser = MakeField(this, "txtUser", "Unknown", 100, "User Name (Shows in Profile)");
    cmdSetUser = MakeButton(this, "cmdSetUser", "Set User");
    cmdSaveSettings = MakeButton(this, "cmdSaveSettings", "Save Settings");
    cmdLoadSettings = MakeButton(this, "cmdLoadSettings", "Load Settings");
    cmdCredits = MakeButton(this, "cmdCredits", "Credits");

    auto* user = new QFormLayout;
    user->addRow("User Name (Shows in Profile)", txtUser);
    auto* userButtons = new QHBoxLayout;
    userButtons->addWidget(cmdSetUser);
    userButtons->addStretch();
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdSaveSettings);
    buttons->addWidget(cmdLoadSettings);
    buttons->addWidget(cmdCredits);
    buttons->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(MakeTitle(this, 39, "Other"));
    for (QCheckBox* c : {chkLCase, chkNewTopic, chkTopicVote, chkHint})
        layout->addWidget(c);
    layout->addLayout(user);
    layout->addLayout(userButtons);
    layout->addLayout(buttons);
    layout->addStretch();

    game::Game& g = bot.game;
    connect(chkLCase, &QCheckBox::toggled, this, [&g](bool on) { g.chkLCase = on; });
    connect(chkNewTopic, &QCheckBox::toggled, this, [&g](bool on) { g.chkNewTopic = on; });
    connect(chkTopicVote, &QCheckBox::toggled, this, [&g](bool on) { g.chkTopicVote = on; });
    connect(chkHint, &QCheckBox::toggled, this, [&bot](bool on) { bot.commands.chkHint = on; });
    connect(cmdSetUser, &QPushButton::clicked, this,
            [this, &bot] { bot.session.cmdSetUser_Click(ToCp1252(txtUser->text())); });
    connect(cmdSaveSettings, &QPushButton::clicked, this, &OtherPanel::saveSettingsRequested);
    connect(cmdLoadSettings, &QPushButton::clicked, this, &OtherPanel::loadSettingsRequested);
    connect(cmdCredits, &QPushButton::clicked, this, [&bot] { bot.actions.cmdCredits_Click(); });
}

ErrorsPanel::ErrorsPanel(session::Bot& bot, QWidget* parent) : QWidget(parent) {
    setObjectName("pBoxMain10");
    lstErrors = MakeList(this, "lstErrors", "Errors");
    (new StringListModel(bot.errors, this))->Attach(lstErrors);
    cmdClearErrors = MakeButton(this, "cmdClearErrors", "Clear");
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(MakeTitle(this, 45, "Errors"));
    layout->addWidget(lstErrors, 1);
    layout->addWidget(cmdClearErrors, 0, Qt::AlignLeft);
    connect(cmdClearErrors, &QPushButton::clicked, this, [&bot] { bot.errors.Clear(); });
}
