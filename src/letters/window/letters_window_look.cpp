// How the window looks, what of it is remembered, and its keys and wheel.
#include "letters/window/letters_window.h"

#include "letters/window/letter_view.h"
#include "letters/window/results_model.h"
#include "letters/window/scheme.h"
#include "letters/window/take_out.h"

#include <QAction>
#include <QCloseEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScreen>
#include <QShowEvent>
#include <QSplitter>
#include <QTableView>
#include <QWheelEvent>

#include <algorithm>

namespace tolvek {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kUsualPoints = 11;
constexpr int kCellMargin = 8;
constexpr QSize kUsualSize(1240, 780);

}

void LettersWindow::zoom(int steps)
{
    setTextPoints(steps == 0 ? kUsualPoints : look_.textPoints + steps);
}

void LettersWindow::setTextPoints(int points)
{
    look_.textPoints = std::clamp(points, 6, 48);
    for (QWidget* const widget : {static_cast<QWidget*>(letter_), static_cast<QWidget*>(results_),
                                  static_cast<QWidget*>(people_)}) {
        QFont font = widget->font();
        font.setPointSize(look_.textPoints);
        widget->setFont(font);
    }
    for (QTableView* const list : {results_, people_})
        list->verticalHeader()->setDefaultSectionSize(list->fontMetrics().height() * 5 / 4 + 4);
    const int date = results_->fontMetrics().horizontalAdvance(u"0000/00/00 00:00"_s);
    results_->horizontalHeader()->resizeSection(ResultsModel::Date, date + 2 * kCellMargin);
}

void LettersWindow::setScheme(Scheme scheme)
{
    look_.scheme = scheme;
    applyScheme(scheme);
    schemes_[static_cast<int>(scheme)]->setChecked(true);
}

void LettersWindow::restoreLook()
{
    if (!start_.settingsFile.isEmpty()) look_ = readWindowSettings(start_.settingsFile);
    resize(kUsualSize.boundedTo(screen()->availableSize() - QSize(40, 60)));
    restoreGeometry(look_.geometry);
    panes_->setSizes({190, 600, 440});
    panes_->restoreState(look_.panes);
    results_->horizontalHeader()->restoreState(look_.columns);
    setTextPoints(look_.textPoints);
    setScheme(look_.scheme);
}

// As the lists are wide when they are first shown; later as the user left them.
void LettersWindow::showEvent(QShowEvent* event)
{
    QMainWindow::showEvent(event);
    if (!look_.columns.isEmpty() || event->spontaneous()) return;
    QHeaderView& columns = *results_->horizontalHeader();
    const int rest = results_->viewport()->width() - columns.sectionSize(ResultsModel::Date);
    columns.resizeSection(ResultsModel::Person, rest * 24 / 100);
    columns.resizeSection(ResultsModel::Subject, rest * 36 / 100);
}

void LettersWindow::saveLook() const
{
    if (start_.settingsFile.isEmpty()) return;
    WindowSettings look = look_;
    look.geometry = saveGeometry();
    look.panes = panes_->saveState();
    look.columns = results_->horizontalHeader()->saveState();
    writeWindowSettings(start_.settingsFile, look);
}

void LettersWindow::closeEvent(QCloseEvent* event)
{
    takeOutRun_->cancel();
    saveLook();
    event->accept();
}

// The archives may have changed while another program was used.
bool LettersWindow::event(QEvent* event)
{
    if (event->type() == QEvent::WindowActivate) desk_.desk().refresh();
    return QMainWindow::event(event);
}

// The wheel of the lists, and the keys of the field that belong to the list.
bool LettersWindow::eventFilter(QObject* watched, QEvent* event)
{
    const bool taken = event->type() == QEvent::Wheel
                           ? zoomsBy(static_cast<QWheelEvent&>(*event))
                           : watched == field_ && event->type() == QEvent::KeyPress &&
                                 takesKey(static_cast<QKeyEvent&>(*event));
    return taken || QMainWindow::eventFilter(watched, event);
}

bool LettersWindow::zoomsBy(const QWheelEvent& wheel)
{
    const int turn = wheel.angleDelta().y();
    if (!wheel.modifiers().testFlag(Qt::ControlModifier) || turn == 0) return false;
    zoom(turn > 0 ? 1 : -1);
    return true;
}

bool LettersWindow::takesKey(const QKeyEvent& pressed)
{
    const int key = pressed.key();
    if (key == Qt::Key_Escape && !field_->text().isEmpty()) {
        field_->clear();
        return true;
    }
    const int rows = key == Qt::Key_Down ? 1 : key == Qt::Key_Up ? -1 : 0;
    if (rows == 0 || resultsModel_->rowCount() == 0) return false;
    const int row = results_->currentIndex().row() + rows;
    goToRow(std::clamp(row, 0, resultsModel_->rowCount() - 1));
    return true;
}

}
