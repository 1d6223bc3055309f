#include "platform/forms/form_window.h"
#include "platform/forms/events.h"
#include "platform/forms/form.h"
#include "platform/forms/input_hold.h"
#include "platform/forms/menu.h"
#include "platform/forms/screen.h"
#include "platform/forms/spoken.h"
#include "platform/forms/timer.h"
#include "platform/forms/twips.h"

#include <QAccessible>
#include <QApplication>
#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenuBar>
#include <QScopedValueRollback>

#include <algorithm>

namespace tolvek {

FormWindow::FormWindow(Form& form, Qt::WindowFlags flags)
    : QWidget(nullptr, flags), form_(&form), client_(new QWidget(this)), scroll_(*this, *client_)
{
    speakForms();
    client_->setAutoFillBackground(true);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, const QWidget* now) {
        if (now) scroll_.reveal(*now);
    });
}

QMenuBar& FormWindow::menuBar()
{
    if (!menuBar_) {
        menuBar_ = new QMenuBar(this);
        // The bar must be inside the window: its height is part of the window's size.
        menuBar_->setNativeMenuBar(false);
        // A scrolled client area passes below the bar.
        menuBar_->setAutoFillBackground(true);
    }
    return *menuBar_;
}

int FormWindow::menuBarHeight() const
{
    return menuBar_ ? menuBar_->sizeHint().height() : 0;
}

// The frame that the window manager draws, or a usual one before it is drawn.
QSize FormWindow::frame() const
{
    if (windowFlags().testFlag(Qt::FramelessWindowHint)) return {0, 0};
    const QSize usual(kFrameTwipsWide / kTwipsPerPixel, kTitleTwipsHigh / kTwipsPerPixel);
    return usual.expandedTo(frameGeometry().size() - size());
}

void FormWindow::setClientSize(const QSize& size, bool fixed)
{
    const QSize bar(0, menuBarHeight());
    const QSize room = Screen::available(*this).size() - frame() - bar;
    fixed_ = fixed;
    askedClient_ = size;
    askedWindow_ = scroll_.viewFor(size, room) + bar;
    if (fixed) setFixedSize(askedWindow_);
    if (!insisted_) resize(askedWindow_);
    setContentSize(size);
}

void FormWindow::setContentSize(const QSize& size)
{
    content_ = size;
    arrange();
}

QPoint FormWindow::fitting(const QPoint& corner) const
{
    const QRect screen = Screen::available(*this);
    const QSize least = screen.size() - askedWindow_ - frame();
    QPoint fit = corner;
    if (askedWindow_.width() < askedClient_.width())
        fit.setX(std::clamp(corner.x(), screen.x(), screen.x() + std::max(0, least.width())));
    if (askedWindow_.height() < askedClient_.height() + menuBarHeight())
        fit.setY(std::clamp(corner.y(), screen.y(), screen.y() + std::max(0, least.height())));
    return fit;
}

QRect FormWindow::view() const
{
    const int top = menuBarHeight();
    return {0, top, width(), height() - top};
}

void FormWindow::arrange()
{
    if (menuBar_) {
        menuBar_->setGeometry(0, 0, width(), menuBarHeight());
        menuBar_->raise();
    }
    scroll_.arrange(view(), content_);
}

void FormWindow::detach()
{
    form_ = nullptr;
    // The window is deleted later; until then its timers would still tick.
    for (Timer* timer : findChildren<Timer*>())
        timer->setEnabled(false);
}

void FormWindow::resizeEvent(QResizeEvent*)
{
    // A side that the user hasn't changed keeps the client area that it was made for.
    const QSize shown = view().size();
    content_ = {width() == askedWindow_.width() || fixed_ ? askedClient_.width() : shown.width(),
                height() == askedWindow_.height() || fixed_ ? askedClient_.height()
                                                            : shown.height()};
    arrange();
    if (form_) reportSize(*form_);
}

// The form may refuse the size by setting another one. A window manager that then
// insists, for example while it maximises the window on a small screen, gets its way:
// otherwise both would go on for ever.
void FormWindow::reportSize(Form& form)
{
    // Resizing inside the report enters this again.
    if (reporting_) return form.windowResized(content_);
    const QSize given = size();
    const QScopedValueRollback reporting(reporting_, true);
    const QScopedValueRollback insisted(insisted_, given == refused_);
    form.windowResized(content_);
    refused_ = insisted_ || size() != given ? given : QSize();
}

void FormWindow::moveEvent(QMoveEvent*)
{
    if (form_) form_->windowMoved(pos());
}

// The form decides; the window is closed only by the unload.
void FormWindow::closeEvent(QCloseEvent* event)
{
    event->ignore();
    // A close request during a hold is repeated afterwards.
    if (keptBack(*this, [this] { close(); })) return;
    // The window manager may send a close request even without a close button.
    if (form_ && form_->controlBox_)
        runEvent([form = form_] { form->unload(UnloadMode::ControlMenu); });
}

void FormWindow::keyPressEvent(QKeyEvent* event)
{
    const bool used = form_ && form_->keyPressed(event->key());
    if (!used && !pressedForMenu(*event) && !scroll_.pressed(event->key())) event->ignore();
}

// Keys that the control with the focus hasn't used.
bool FormWindow::pressedForMenu(const QKeyEvent& event)
{
    if (event.key() == Qt::Key_F10 && event.modifiers() == Qt::NoModifier) {
        enterMenuBar();
        return true;
    }
    QWidget* const focused = focusWidget();
    if (!opensMenu(event) || !focused || event.key() == Qt::Key_Menu) return false;
    // The toolkit itself sends this request for the menu key, but not for Shift+F10.
    const QPoint middle = focused->rect().center();
    QContextMenuEvent request(QContextMenuEvent::Keyboard, middle, focused->mapToGlobal(middle));
    QApplication::sendEvent(focused, &request);
    return true;
}

// Opens the first menu that isn't disabled; the arrow keys lead to the others.
void FormWindow::enterMenuBar()
{
    if (!menuBar_) return;
    for (QAction* entry : menuBar_->actions())
        if (entry->isEnabled() && entry->isVisible()) return menuBar_->setActiveAction(entry);
}

bool FormWindow::isDialog() const
{
    return isModal() || windowType() == Qt::Dialog;
}

void FormWindow::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!isDialog() || event->spontaneous()) return;
    QAccessibleEvent start(this, QAccessible::DialogStart);
    QAccessible::updateAccessibility(&start);
}

void FormWindow::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    if (!isDialog() || event->spontaneous()) return;
    QAccessibleEvent end(this, QAccessible::DialogEnd);
    QAccessible::updateAccessibility(&end);
}

// Called by the toolkit also for a control that is disabled while it has the focus.
bool FormWindow::focusNextPrevChild(bool next)
{
    return keepsFocus_ || QWidget::focusNextPrevChild(next);
}

void FormWindow::settleFocus()
{
    QWidget* const focused = focusWidget();
    if (!focused) return;
    if (focused->isEnabled())
        focused->setFocus(Qt::OtherFocusReason);
    else
        focusNextPrevChild(true);
}

void FormWindow::wheelEvent(QWheelEvent* event)
{
    if (!scroll_.turn(*event)) event->ignore();
}

}
