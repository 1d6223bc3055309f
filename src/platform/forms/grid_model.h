// The cells of a grid. The fixed row and column are the view's headers, the
// ordinary cells its items. Row and column numbers are those of the grid, fixed
// ones included.
#pragma once
#include "platform/runtime/text.h"

#include <QAbstractTableModel>

#include <vector>

namespace tolvek {

class GridModel : public QAbstractTableModel {
    Q_OBJECT
public:
    GridModel(int rows, int cols, int fixedRows, int fixedCols, QObject* parent);

    int rows() const { return static_cast<int>(cells_.size()); }
    int cols() const { return cols_; }
    int fixedRows() const { return fixedRows_; }
    int fixedCols() const { return fixedCols_; }
    void setRows(int rows);
    void setCols(int cols);
    const Text& text(int row, int col) const;
    void setText(int row, int col, TextView text);
    void clear();
    // The index of an ordinary cell; invalid for a fixed one.
    QModelIndex indexOf(int row, int col) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    Text& cell(int row, int col);

    int cols_;
    int fixedRows_;
    int fixedCols_;
    std::vector<std::vector<Text>> cells_;
};

}
