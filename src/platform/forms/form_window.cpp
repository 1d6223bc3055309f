#include "platform/forms/form_window.h"
#include "platform/forms/events.h"
#include "platform/forms/form.h"
#include "platform/forms/input_hold.h"
#include "platform/forms/timer.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QMenuBar>

namespace tolvek {

FormWindow::FormWindow(Form& form, Qt::WindowFlags flags)
    : QWidget(nullptr, flags), form_(&form), client_(new QWidget(this))
{
    client_->setAutoFillBackground(true);
}

QMenuBar& FormWindow::menuBar()
{
    if (!menuBar_) {
        menuBar_ = new QMenuBar(this);
        // The bar must be inside the window: its height is part of the window's size.
        menuBar_->setNativeMenuBar(false);
    }
    return *menuBar_;
}

int FormWindow::menuBarHeight() const
{
    return menuBar_ ? menuBar_->sizeHint().height() : 0;
}

void FormWindow::setClientSize(const QSize& size, bool fixed)
{
    const QSize whole = size + QSize(0, menuBarHeight());
    if (fixed) setFixedSize(whole);
    resize(whole);
    arrange();
}

void FormWindow::arrange()
{
    const int top = menuBarHeight();
    if (menuBar_) menuBar_->setGeometry(0, 0, width(), top);
    client_->setGeometry(0, top, width(), height() - top);
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
    arrange();
    if (form_) form_->windowResized(client_->size());
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
    if (!form_ || !form_->keyPressed(event->key())) event->ignore();
}

}
