#include "platform/forms/grid.h"
#include "platform/forms/cut_tips.h"
#include "platform/forms/grid_model.h"
#include "platform/runtime/runtime_error.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>

namespace tolvek {

namespace {

constexpr float kDefaultColWidth = 960;
constexpr int kRowPadding = 5;

[[noreturn]] void throwBadRow()
{
    throw RuntimeError(30009);
}
[[noreturn]] void throwBadCol()
{
    throw RuntimeError(30010);
}

// Marks the cell at Row, Col. The view's own current item follows only where the user
// moves: code moves Row and Col for every cell that it fills, which must not cause a
// layout.
class CellPainter : public CutTips {
public:
    CellPainter(const Grid& grid, const GridModel& model, QObject* parent)
        : CutTips(parent), grid_(grid), model_(model)
    {
    }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override
    {
        CutTips::initStyleOption(option, index);
        // The view marks a first cell of its own choice when it gets the focus.
        option->state &= ~QStyle::State_HasFocus;
        if (index == model_.indexOf(grid_.Row(), grid_.Col()))
            option->state |= QStyle::State_Selected;
    }

private:
    const Grid& grid_;
    const GridModel& model_;
};

void prepareHeader(QHeaderView& header, bool shown)
{
    header.setVisible(shown);
    header.setSectionsClickable(false);
    header.setHighlightSections(false);
    header.setSectionResizeMode(QHeaderView::Fixed);
    // Otherwise Qt would widen narrow columns.
    header.setMinimumSectionSize(1);
}

}

Grid::Grid(Container container, TextView name, GridDesign design)
    : ControlOf(container, name),
      model_(new GridModel(design.rows, design.cols, design.fixedRows, design.fixedCols, this)),
      row_(design.fixedRows), col_(design.fixedCols)
{
    setModel(model_);
    setItemDelegate(new CellPainter(*this, *model_, this));
    setSelectionMode(NoSelection);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setAutoScroll(false); // a click on a cell that is partly shown moves nothing
    addCutTips(*horizontalHeader());
    addCutTips(*verticalHeader());
    prepareHeader(*horizontalHeader(), design.fixedRows > 0);
    prepareHeader(*verticalHeader(), design.fixedCols > 0);
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    applyRowHeight();
    applyAllColWidths();
    connect(horizontalHeader(), &QHeaderView::sectionResized, this,
            [this](int section, int, int size) { takeDraggedWidth(section, size); });
}

void Grid::applyRowHeight()
{
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kRowPadding);
}

void Grid::applyFont(const QFont& font)
{
    Control::applyFont(font);
    applyRowHeight();
}

int Grid::Rows() const
{
    return model_->rows();
}
int Grid::Cols() const
{
    return model_->cols();
}
int Grid::FixedRows() const
{
    return model_->fixedRows();
}
int Grid::FixedCols() const
{
    return model_->fixedCols();
}

void Grid::setRows(int rows)
{
    if (rows < 0) throwBadRow();
    model_->setRows(rows);
    row_ = std::clamp(row_, 0, std::max(0, rows - 1));
    viewport()->update();
}

void Grid::setCols(int cols)
{
    if (cols < 0) throwBadCol();
    model_->setCols(cols);
    col_ = std::clamp(col_, 0, std::max(0, cols - 1));
    applyAllColWidths();
}

void Grid::setRow(int row)
{
    if (row < 0 || row >= Rows()) throwBadRow();
    row_ = row;
    viewport()->update();
}

void Grid::setCol(int col)
{
    checkCol(col);
    col_ = col;
    viewport()->update();
}

void Grid::checkCol(int col) const
{
    if (col < 0 || col >= Cols()) throwBadCol();
}

const tolvek::Text& Grid::Text() const
{
    return TextMatrix(row_, col_);
}

void Grid::setText(TextView text)
{
    setTextMatrix(row_, col_, text);
}

const tolvek::Text& Grid::TextMatrix(int row, int col) const
{
    if (row < 0 || row >= Rows()) throwBadRow();
    checkCol(col);
    return model_->text(row, col);
}

void Grid::setTextMatrix(int row, int col, TextView text)
{
    static_cast<void>(TextMatrix(row, col)); // for its checks
    model_->setText(row, col, text);
}

void Grid::Clear()
{
    model_->clear();
}

float Grid::ColWidth(int col) const
{
    checkCol(col);
    const auto found = colWidths_.find(col);
    return found == colWidths_.end() ? kDefaultColWidth : found->second;
}

void Grid::setColWidth(int col, float twips)
{
    checkCol(col);
    colWidths_[col] = twips;
    applyColWidth(col);
}

void Grid::applyColWidth(int col)
{
    // A resize by code fires sectionResized too; it must not replace the twips as
    // set by a rounded value.
    applyingWidth_ = true;
    const int width = pixels(ColWidth(col));
    // The fixed column is the vertical header.
    if (col < FixedCols())
        verticalHeader()->setFixedWidth(width);
    else
        horizontalHeader()->resizeSection(col - FixedCols(), width);
    applyingWidth_ = false;
}

void Grid::applyAllColWidths()
{
    for (int col = 0; col < Cols(); ++col)
        applyColWidth(col);
}

void Grid::takeDraggedWidth(int section, int size)
{
    if (!applyingWidth_) colWidths_[section + FixedCols()] = twips(size);
}

void Grid::setAllowColumnResize(bool allow)
{
    horizontalHeader()->setSectionResizeMode(allow ? QHeaderView::Interactive : QHeaderView::Fixed);
}

QRect Grid::cellRect(int row, int col) const
{
    return visualRect(model_->indexOf(row, col));
}

bool Grid::onOrdinaryCell() const
{
    return model_->indexOf(row_, col_).isValid();
}

void Grid::mousePressEvent(QMouseEvent* event)
{
    const QModelIndex cell = indexAt(event->position().toPoint());
    if (event->button() != Qt::LeftButton || !cell.isValid()) return;
    setRow(cell.row() + FixedRows());
    setCol(cell.column() + FixedCols());
    emit Click();
    showFocusedCell();
}

// The press alone is the event; the view's own handling of drags and releases is
// disabled.
void Grid::mouseMoveEvent(QMouseEvent* event)
{
    event->accept();
}

void Grid::mouseReleaseEvent(QMouseEvent* event)
{
    event->accept();
}

// The second press of a double click counts as a press too.
void Grid::mouseDoubleClickEvent(QMouseEvent* event)
{
    mousePressEvent(event);
}

bool Grid::moveByKey(int key)
{
    // One row less than fits, so that a row of the previous page stays visible.
    const int page =
        std::max(1, viewport()->height() / std::max(1, verticalHeader()->defaultSectionSize()) - 1);
    int row = row_;
    int col = col_;
    switch (key) {
    case Qt::Key_Up:
        --row;
        break;
    case Qt::Key_Down:
        ++row;
        break;
    case Qt::Key_Left:
        --col;
        break;
    case Qt::Key_Right:
        ++col;
        break;
    case Qt::Key_PageUp:
        row -= page;
        break;
    case Qt::Key_PageDown:
        row += page;
        break;
    case Qt::Key_Home:
        col = FixedCols();
        break;
    case Qt::Key_End:
        col = Cols() - 1;
        break;
    default:
        return false;
    }
    // Without ordinary cells the keys are consumed but move nothing.
    if (model_->rowCount() > 0 && model_->columnCount() > 0) {
        setRow(std::clamp(row, FixedRows(), Rows() - 1));
        setCol(std::clamp(col, FixedCols(), Cols() - 1));
        scrollTo(model_->indexOf(row_, col_));
    }
    return true;
}

void Grid::keyPressEvent(QKeyEvent* event)
{
    const int key = event->key();
    const bool press = key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space;
    if (press && onOrdinaryCell())
        emit Click();
    else if (!moveByKey(key))
        return event->ignore();
    showFocusedCell();
}

// Without a current item the view would choose one of its own.
void Grid::focusInEvent(QFocusEvent* event)
{
    showFocusedCell();
    ControlOf::focusInEvent(event);
}

// The view announces its current item.
void Grid::showFocusedCell()
{
    if (onOrdinaryCell())
        selectionModel()->setCurrentIndex(model_->indexOf(row_, col_),
                                          QItemSelectionModel::NoUpdate);
}

}
