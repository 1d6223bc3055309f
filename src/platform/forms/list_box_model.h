// The texts of a list box. Each is painted on one line, with a blank for each line
// end.
#pragma once
#include "platform/runtime/text.h"

#include <QAbstractListModel>

#include <vector>

namespace tolvek {

class ListBoxModel : public QAbstractListModel {
    Q_OBJECT
public:
    using QAbstractListModel::QAbstractListModel;

    int count() const { return static_cast<int>(entries_.size()); }
    const Text& at(int index) const { return entries_[static_cast<std::size_t>(index)]; }
    void clear();
    void append(TextView text);
    void replace(int index, TextView text);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    std::vector<Text> entries_;
};

}
