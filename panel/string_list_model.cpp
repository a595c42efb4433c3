#include "panel/string_list_model.h"

#include <QItemSelectionModel>

#include "panel/cp1252.h"

StringListModel::StringListModel(game::ListSource& list, QObject* parent)
    : QAbstractListModel(parent), list_(list) {
    list_.SetObserver(this);
}

StringListModel::~StringListModel() {
    list_.SetObserver(nullptr);
}

int StringListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : list_.Count();
}

QVariant StringListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= list_.Count()) return {};
    if (role == Qt::DisplayRole || role == Qt::AccessibleTextRole) {
        return FromCp1252(list_.At(index.row()));
    }
    return {};
}

void StringListModel::Attach(QListView* view) {
    view->setModel(this);
    view->setUniformItemSizes(true);
    view->setSelectionMode(QAbstractItemView::SingleSelection);
    connect(view->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& current) {
                if (removing_) return;
                list_.Select(current.isValid() ? current.row() : -1);
            });
    connect(this, &StringListModel::selectedRowChanged, view, [this, view](int row) {
        if (row < 0) {
            view->selectionModel()->clear();
        } else {
            view->setCurrentIndex(index(row));
            view->scrollTo(index(row));
        }
    });
}

void StringListModel::RowsAboutToBeInserted(int first, int last) {
    beginInsertRows(QModelIndex(), first, last);
}
void StringListModel::RowsInserted() {
    endInsertRows();
}
void StringListModel::RowsAboutToBeRemoved(int first, int last) {
    removing_ = true;
    beginRemoveRows(QModelIndex(), first, last);
}
void StringListModel::RowsRemoved() {
    endRemoveRows();
    removing_ = false;
    // The view shows the list's selection, not the row it moved to.
    emit selectedRowChanged(list_.Selected());
}
void StringListModel::AboutToReset() {
    beginResetModel();
}
void StringListModel::WasReset() {
    endResetModel();
}
void StringListModel::RowChanged(int row) {
    emit dataChanged(index(row), index(row));
}
void StringListModel::SelectionChanged(int row) {
    emit selectedRowChanged(row);
}
