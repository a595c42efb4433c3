// The topic picker "Topic List": the loaded topics, filled when the window
// loads, and "Add Selected" to put one on the scramble list. It does not
// block the main window.
#pragma once

#include <QListWidget>
#include <QPushButton>
#include <QWidget>

#include "session/bot.h"

class TopicPicker : public QWidget {
    Q_OBJECT

  public:
    explicit TopicPicker(session::Bot& bot, QWidget* parent = nullptr);
    // Fills the list with the names of the loaded topics, in order.
    void Load();

    QListWidget* lstTopics;
    QPushButton* cmdAdd;

  private:
    void cmdAdd_Click();
    session::Bot& bot_;
};
