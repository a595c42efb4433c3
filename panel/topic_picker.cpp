#include "panel/topic_picker.h"

#include <QLabel>
#include <QVBoxLayout>

#include "panel/cp1252.h"

TopicPicker::TopicPicker(session::Bot& bot, QWidget* parent) : QWidget(parent), bot_(bot) {
    setObjectName("frmTopics");
    setWindowTitle("Topic List");
    lstTopics = new QListWidget(this);
    lstTopics->setObjectName("lstTopics");
    lstTopics->setAccessibleName("Current Loaded Topics");
    cmdAdd = new QPushButton("Add Selected", this);
    cmdAdd->setObjectName("cmdAdd");
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel("Current Loaded Topics", this));
    layout->addWidget(lstTopics, 1);
    layout->addWidget(cmdAdd);
    resize(260, 320);
    connect(cmdAdd, &QPushButton::clicked, this, &TopicPicker::cmdAdd_Click);
}

void TopicPicker::Load() {
    lstTopics->clear();
    for (const game::TopicClass& topic : bot_.game.Lists().Topics()) {
        lstTopics->addItem(FromCp1252(topic.GetTopic()));
    }
}

void TopicPicker::cmdAdd_Click() {
    QListWidgetItem* item = lstTopics->currentItem();
    if (!item || !item->isSelected()) {
        bot_.dialogs.ShowMessage("Please select a Topic to add!", "Note",
                                 game::MessageKind::Warning);
        return;
    }
    bot_.game.Lists().AddTopicList(ToCp1252(item->text()));
}
