// Shows a game list (a StringList or any ListSource) in a QListView: the model follows every
// change of the list, and the view's current row and the list's selection
// follow each other. A view asks only for the rows it draws, so a list of a
// million rows stays quick.
#pragma once

#include <QAbstractListModel>
#include <QListView>

#include "game/string_list.h"

class StringListModel : public QAbstractListModel, public game::ListObserver {
    Q_OBJECT

  public:
    StringListModel(game::ListSource& list, QObject* parent);
    ~StringListModel() override;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;

    // Shows the list in `view` and ties the view's current row to the list's
    // selected row, both ways.
    void Attach(QListView* view);

    void RowsAboutToBeInserted(int first, int last) override;
    void RowsInserted() override;
    void RowsAboutToBeRemoved(int first, int last) override;
    void RowsRemoved() override;
    void AboutToReset() override;
    void WasReset() override;
    void RowChanged(int row) override;
    void SelectionChanged(int row) override;

  signals:
    void selectedRowChanged(int row);

  private:
    game::ListSource& list_;
    // While rows go, the view moves its current row by itself; the list has
    // already decided its selection, so that move must not flow back.
    bool removing_ = false;
};
