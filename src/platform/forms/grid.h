// The grid of the editors: text cells in rows and columns; the first row and column
// may be fixed.
//
// Text is read and written after setting Row and Col. Code may set them to a fixed
// row, a user's click can't. A click on an ordinary cell sets both and then fires
// Click; a click on a fixed cell or outside the cells does nothing. The arrow keys
// move Row and Col without an event; Enter and Space act as a click. Row outside 0
// to Rows - 1 is error 30009, Col likewise error 30010. The cell at Row and Col is the
// one that a screen reader finds focused.
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
    // A new grid has its first ordinary cell as Row and Col.
    Grid(Container container, TextView name, GridDesign design);

    int Rows() const;
    int Cols() const;
    int FixedRows() const;
    int FixedCols() const;
    void setRows(int rows); // new rows are empty and at the end; Row stays in range
    void setCols(int cols);
    int Row() const { return row_; }
    int Col() const { return col_; }
    void setRow(int row);
    void setCol(int col);

    const tolvek::Text& Text() const; // of the cell at Row, Col
    void setText(TextView text);
    const tolvek::Text& TextMatrix(int row, int col) const;
    void setTextMatrix(int row, int col, TextView text);
    void Clear(); // empties all cells, fixed ones too; changes nothing else

    float ColWidth(int col) const; // twips; as set, until the user drags
    void setColWidth(int col, float twips);
    void setAllowColumnResize(bool allow); // off by default

    // For tests: the rectangle of an ordinary cell in pixels of viewport().
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
    void focusInEvent(QFocusEvent* event) override;

private:
    void showFocusedCell();
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
