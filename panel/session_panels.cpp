#include "panel/session_panels.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QTimer>
#include <QVBoxLayout>

#include "game/product.h"
#include "panel/cp1252.h"
#include "panel/string_list_model.h"

ConnectionPanel::ConnectionPanel(session::Bot& bot, QWidget* parent) : QWidget(parent), bot_(bot) {
    setObjectName("pBoxMain0");
    txtSN = MakeField(this, "txtSN", "", 200, "Screenname");
    txtPW = MakeField(this, "txtPW", "", 16, "Password");
    txtPW->setEchoMode(QLineEdit::Password);
    // The password shows as '*' whatever the style would draw.
    txtPW->setStyleSheet("lineedit-password-character: 42");
    cmbServers = new QComboBox(this);
    cmbServers->setObjectName("cmbServers");
    cmbServers->setEditable(true);
    cmbServers->addItem(
        QString::fromLatin1(game::kDefaultLoginServer.data(),
                            static_cast<qsizetype>(game::kDefaultLoginServer.size())));
    cmbServers->setAccessibleName("Servers");
    txtPort = MakeField(this, "txtPort", "5190", 5, "Port");
    chkFullCaps = MakeCheck(this, "chkFullCaps", "Login with full capabilities", true);
    chkLock = MakeCheck(this, "chkLock", "Login with Secure IM", true);
    chkReconnect = MakeCheck(this, "chkReconnect", "Reconnect automatically", true);
    cmdSignOn = MakeButton(this, "cmdSignOn", "Sign On");
    cmdSignOff = MakeButton(this, "cmdSignOff", "Sign Off");
    cmdSignOff->setEnabled(false);
    lblInfo = MakeLabel(this, "lblInfo", "Offline.");
    lblInfo->setWordWrap(true);

    auto* form = new QFormLayout;
    form->addRow("Screenname", txtSN);
    form->addRow("Password", txtPW);
    form->addRow("Servers", cmbServers);
    form->addRow("Port", txtPort);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdSignOn);
    buttons->addWidget(cmdSignOff);
    buttons->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(MakeTitle(this, 0, "Connections"));
    layout->addLayout(form);
    layout->addWidget(chkFullCaps);
    layout->addWidget(chkLock);
    layout->addWidget(chkReconnect);
    layout->addLayout(buttons);
    layout->addWidget(lblInfo);
    layout->addStretch();

    ApplyCapabilities();
    connect(chkFullCaps, &QCheckBox::toggled, this, &ConnectionPanel::ApplyCapabilities);
    connect(chkLock, &QCheckBox::toggled, this, &ConnectionPanel::ApplyCapabilities);
    bot_.session.SetAutoReconnect(chkReconnect->isChecked());
    connect(chkReconnect, &QCheckBox::toggled, this,
            [this](bool on) { bot_.session.SetAutoReconnect(on); });
    connect(cmdSignOn, &QPushButton::clicked, this, [this] {
        bot_.session.cmdSignOn_Click({ToCp1252(txtSN->text()), ToCp1252(txtPW->text()),
                                      ToCp1252(cmbServers->currentText()),
                                      ToCp1252(txtPort->text())});
    });
    connect(cmdSignOff, &QPushButton::clicked, this, [this] { bot_.session.cmdSignOff_Click(); });
}

void ConnectionPanel::ApplyCapabilities() {
    bot_.client.SetCapabilityOptions({chkFullCaps->isChecked(), chkLock->isChecked()});
}

void ConnectionPanel::Refresh() {
    cmdSignOff->setEnabled(bot_.session.cmdSignOffEnabled());
    ShowStatus(lblInfo, FromCp1252(bot_.session.lblInfo()));
}

ChatsPanel::ChatsPanel(session::Bot& bot, QWidget* parent) : QWidget(parent), bot_(bot) {
    setObjectName("pBoxMain1");
    txtChat = MakeField(this, "txtChat", "Chat name", 50, "Chat");
    txtEx = MakeField(this, "txtEx", "4", 2, "Ex.");
    cmdJoin = MakeButton(this, "cmdJoin", "Join Chat");
    cmdLeave = MakeButton(this, "cmdLeave", "Leave Chat");
    lblChatStatus = MakeLabel(this, "lblChatStatus", "You are not in a chat.");
    lblChatStatus->setWordWrap(true);

    auto* form = new QFormLayout;
    form->addRow("Chat", txtChat);
    form->addRow("Ex.", txtEx);
    form->addRow("Chat Status:", lblChatStatus);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(cmdJoin);
    buttons->addWidget(cmdLeave);
    buttons->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(MakeTitle(this, 5, "Chats"));
    layout->addLayout(form);
    layout->addLayout(buttons);
    layout->addWidget(MakeNote(
        this, 9,
        "Unfortunately, you are only allowed to play the scrambler in one chat at a time. This is "
        "because it would take too much to make it work with three chats and keeping scores and "
        "players for all three at once."));
    layout->addStretch();

    connect(cmdJoin, &QPushButton::clicked, this, [this] {
        bot_.session.cmdJoin_Click(ToCp1252(txtChat->text()), ToCp1252(txtEx->text()));
    });
    connect(cmdLeave, &QPushButton::clicked, this,
            [this] { bot_.session.cmdLeave_Click(ToCp1252(txtChat->text())); });
}

void ChatsPanel::Refresh() {
    ShowStatus(lblChatStatus, FromCp1252(bot_.session.lblChatStatus()));
}

ConsolePanel::ConsolePanel(session::Bot& bot, QWidget* parent) : QWidget(parent), bot_(bot) {
    setObjectName("pBoxMain9");
    lblChatRoom = MakeLabel(this, "lblChatRoom", "Chat Room:");
    txtMsg = new QPlainTextEdit(this);
    txtMsg->setObjectName("txtMsg");
    txtMsg->setReadOnly(true);
    // A transcript is only ever appended to and cleared: no undo history.
    txtMsg->setUndoRedoEnabled(false);
    txtMsg->setAccessibleName("Chat Console");
    lstPeopleHere = MakeList(this, "lstPeopleHere", "People Here");
    lstPeopleHere->setMaximumWidth(160);
    (new StringListModel(bot.session.lstPeopleHere(), this))->Attach(lstPeopleHere);
    lblPeopleCount = MakeLabel(this, "lblPeopleCount", "# People Here");
    txtSend = MakeField(this, "txtSend", "", 2500, "Message to send");
    cmdSendChat = MakeButton(this, "cmdSendChat", "Send");
    cmdClearChat = MakeButton(this, "cmdClearChat", "Clear Text");

    auto* grid = new QGridLayout;
    grid->addWidget(lblChatRoom, 0, 0);
    grid->addWidget(lblPeopleCount, 0, 1);
    grid->addWidget(txtMsg, 1, 0);
    grid->addWidget(lstPeopleHere, 1, 1);
    auto* sendRow = new QHBoxLayout;
    sendRow->addWidget(txtSend, 1);
    sendRow->addWidget(cmdSendChat);
    sendRow->addWidget(cmdClearChat);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(MakeTitle(this, 44, "Chat Console"));
    layout->addLayout(grid, 1);
    layout->addLayout(sendRow);

    bot.console.SetObserver(
        [this](std::string_view appended, bool cleared) { Append(appended, cleared); });
    connect(cmdSendChat, &QPushButton::clicked, this, &ConsolePanel::Send);
    connect(txtSend, &QLineEdit::returnPressed, this, &ConsolePanel::Send);
    connect(cmdClearChat, &QPushButton::clicked, this, [this] { bot_.console.Clear(); });
}

void ConsolePanel::Append(std::string_view appended, bool cleared) {
    if (cleared) {
        txtMsg->clear();
        pendingLines_.clear();
    }
    if (appended.empty()) return;
    QString text = FromCp1252(std::string(appended));
    text.replace("\r\n", "\n");
    pendingLines_ += text;
    if (flushQueued_) return;
    flushQueued_ = true;
    QTimer::singleShot(0, this, &ConsolePanel::FlushTranscript);
}

void ConsolePanel::FlushTranscript() {
    flushQueued_ = false;
    if (pendingLines_.isEmpty()) return;
    txtMsg->moveCursor(QTextCursor::End);
    txtMsg->insertPlainText(pendingLines_);
    txtMsg->moveCursor(QTextCursor::End);
    pendingLines_.clear();
}

void ConsolePanel::Send() {
    bot_.session.cmdSendChat_Click(ToCp1252(txtSend->text()));
    txtSend->clear();
}

void ConsolePanel::Refresh() {
    lblPeopleCount->setText(FromCp1252(bot_.session.lblPeopleCount()));
    const auto& rooms = bot_.client.Chat();
    lblChatRoom->setText(rooms.empty() ? "Chat Room:"
                                       : "Chat Room: " + FromCp1252(rooms.front().ChatName));
}
