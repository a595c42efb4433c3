// The panels that drive the session: Connection, Chats and Console.
#pragma once

#include <string_view>

#include <QComboBox>
#include <QPlainTextEdit>
#include <QWidget>

#include "panel/widgets.h"
#include "session/bot.h"

class StringListModel;

class ConnectionPanel : public QWidget {
    Q_OBJECT

  public:
    ConnectionPanel(session::Bot& bot, QWidget* parent);
    void Refresh();

    FieldEdit* txtSN;
    FieldEdit* txtPW;
    QComboBox* cmbServers;
    FieldEdit* txtPort;
    QCheckBox* chkFullCaps;
    QCheckBox* chkLock;
    QCheckBox* chkReconnect;
    QPushButton* cmdSignOn;
    QPushButton* cmdSignOff;
    QLabel* lblInfo;

  private:
    void ApplyCapabilities();
    session::Bot& bot_;
};

class ChatsPanel : public QWidget {
    Q_OBJECT

  public:
    ChatsPanel(session::Bot& bot, QWidget* parent);
    void Refresh();

    FieldEdit* txtChat;
    FieldEdit* txtEx;
    QPushButton* cmdJoin;
    QPushButton* cmdLeave;
    QLabel* lblChatStatus;

  private:
    session::Bot& bot_;
};

class ConsolePanel : public QWidget {
    Q_OBJECT

  public:
    ConsolePanel(session::Bot& bot, QWidget* parent);
    void Refresh();

    QLabel* lblChatRoom;
    QPlainTextEdit* txtMsg;
    QListView* lstPeopleHere;
    QLabel* lblPeopleCount;
    FieldEdit* txtSend;
    QPushButton* cmdSendChat;
    QPushButton* cmdClearChat;

  private:
    void Send();
    // Lines reach the transcript once the event loop comes round: a crowd
    // arriving in one read is one insertion and one scroll, not thousands.
    void Append(std::string_view appended, bool cleared);
    void FlushTranscript();

    session::Bot& bot_;
    QString pendingLines_;
    bool flushQueued_ = false;
};
