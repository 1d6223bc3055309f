// The correspondents of the letters found, with their counts. The first row stands for
// all of them.
#pragma once
#include "letters/desk.h"

#include <QAbstractTableModel>

namespace tolvek {

class PeopleModel : public QAbstractTableModel {
    Q_OBJECT
public:
    using QAbstractTableModel::QAbstractTableModel;

    // chosen: stays in the list even if none of its letters match now.
    void show(std::shared_ptr<const Answer> answer, std::optional<PersonId> chosen);

    // Nothing for the first row.
    std::optional<PersonId> personAt(int row) const;
    int rowOf(std::optional<PersonId> person) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    QString nameAt(int row) const;

    std::shared_ptr<const Answer> answer_;
    std::vector<PersonCount> people_;
    std::size_t all_ = 0;
};

}
