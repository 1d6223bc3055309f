// The grid of the editors: cells of text in rows and columns, the first row
// and column fixed if told so.
//
// Text is written and read by setting Row and Col first. Code may set them onto
// a fixed row, a user's click can't. A click on an ordinary cell sets both and
// then fires Click; on a fixed cell or beside the cells nothing happens. The
// arrow keys move Row and Col without an event; Enter and Space are a click.
// Row outside 0 to Rows - 1 is error 30009, Col likewise error 30010.
#pragma once
#include "platform/forms/control.h"

#include <QTableView>

#include <map>

namespace tolvek {

class GridModel;

struct GridDesign {
    int rows = 2;
    int cols = 2;
    int fixedRows = 1; // 0 or 1
    int fixedCols = 0; // 0 or 1
};

class Grid : public ControlOf<QTableView> {
    Q_OBJECT
public:
    // A fresh grid stands on its first ordinary cell.
    Grid(Container container, TextView name, GridDesign design);

    int Rows() const;
    int Cols() const;
    int FixedRows() const;
    int FixedCols() const;
    void setRows(int rows); // new ones are empty, at the end; Row stays inside
    void setCols(int cols);
    int Row() const { return row_; }
    int Col() const { return col_; }
    void setRow(int row);
    void setCol(int col);

    const tolvek::Text& Text() const; // of the cell at Row, Col
    void setText(TextView text);
    const tolvek::Text& TextMatrix(int row, int col) const;
    void setTextMatrix(int row, int col, TextView text);
    void Clear(); // all cells, fixed ones too; nothing else

    float ColWidth(int col) const; // twips; as set until the user drags
    void setColWidth(int col, float twips);
    void setAllowColumnResize(bool allow); // off at first
    void setAllowRowResize(bool allow);    // off at first

    // Where an ordinary cell is, in the pixels of viewport() (for tests).
    QRect cellRect(int row, int col) const;

signals:
    void Click();

protected:
    void applyFont(const QFont& font) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void applyRowHeight();
    void applyColWidth(int col);
    void applyAllColWidths();
    void takeDraggedWidth(int section, int size);
    bool moveByKey(int key);
    bool onOrdinaryCell() const;
    void checkCol(int col) const;

    GridModel* model_;
    int row_;
    int col_;
    std::map<int, float> colWidths_;
    bool applyingWidth_ = false;
};

}
