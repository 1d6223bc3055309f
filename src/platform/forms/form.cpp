#include "platform/forms/form.h"

#include "platform/forms/events.h"
#include "platform/forms/form_window.h"
#include "platform/forms/input_hold.h"
#include "platform/forms/screen.h"
#include "platform/runtime/do_events.h"
#include "platform/runtime/msg_box.h"
#include "platform/runtime/runtime_error.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QMenuBar>
#include <QScopeGuard>
#include <QThread>
#include <QWindow>

#include <algorithm>
#include <cmath>
#include <vector>

namespace tolvek {

namespace {

std::vector<Form*>& loadedForms()
{
    static std::vector<Form*> forms;
    return forms;
}

Qt::WindowFlags windowFlags(BorderStyle border, bool controlBox)
{
    if (border == BorderStyle::None) return Qt::SplashScreen | Qt::FramelessWindowHint;
    const Qt::WindowFlags close = controlBox ? Qt::WindowCloseButtonHint : Qt::WindowFlags();
    // CustomizeWindowHint: the frame has only the parts listed here.
    const Qt::WindowFlags frame = Qt::CustomizeWindowHint | Qt::WindowTitleHint;
    if (border == BorderStyle::FixedDialog)
        return Qt::Dialog | frame | Qt::WindowSystemMenuHint | close;
    return Qt::Window | frame | Qt::WindowSystemMenuHint | Qt::WindowMinMaxButtonsHint | close;
}

}

int Forms::Count()
{
    return static_cast<int>(loadedForms().size());
}

Form& Forms::item(int index)
{
    if (index < 0 || index >= Count()) throw RuntimeError(9);
    return *loadedForms()[static_cast<std::size_t>(index)];
}

Form::Form(TextView name, BorderStyle border) : name_(name), border_(border) {}

Form::~Form()
{
    if (window_) destroyWindow();
    std::erase(loadedForms(), this);
}

FormWindow& Form::built() const
{
    if (!window_) throw RuntimeError(91);
    return static_cast<FormWindow&>(*window_);
}

QWidget& Form::client() const
{
    return built().client();
}
QMenuBar& Form::menuBar()
{
    return built().menuBar();
}
QWidget* Form::window() const
{
    return window_;
}

void Form::buildWindow()
{
    auto* window = new FormWindow(*this, windowFlags(border_, controlBox_));
    window_ = window;
    shown_ = false;
    window->setObjectName(toQt(name_));
    setCaption(caption_);
    setBackColor(backColor_);
    buildControls();
    applyTabOrder(*window);
    applySize();
}

void Form::Load()
{
    if (window_) return;
    const InputHold hold;
    std::erase(loadedForms(), this);
    loadedForms().push_back(this);
    try {
        buildWindow();
    } catch (...) {
        // A form whose controls failed to build must not stay half loaded.
        destroyWindow();
        throw;
    }
    // Each event may unload the form, so the window is checked before the next
    // step.
    if (!std::exchange(initialised_, true)) runEvent([this] { Form_Initialize(); });
    if (window_) runEvent([this] { Form_Load(); });
    rethrowKept();
}

void Form::Show()
{
    Load();
    if (window_) present();
    rethrowKept();
}

// The size is applied again: the menus may have changed the bar's height since the
// controls were built.
void Form::present()
{
    applySize();
    applyPosition();
    // The first showing fires Form_Resize, which may unload the form.
    if (!std::exchange(shown_, true)) fireResize();
    if (!window_) return;
    window_->setWindowState(Qt::WindowNoState);
    if (state_ == WindowStates::Maximized)
        window_->showMaximized();
    else if (state_ == WindowStates::Minimized)
        window_->showMinimized();
    else
        window_->show();
}

void Form::ShowModal(Form* owner)
{
    Load();
    if (!window_) return;
    beforeWait();
    window_->setWindowModality(Qt::ApplicationModal);
    if (owner && owner->window_) {
        window_->winId(); // creates the native window, which needs the owner
        if (QWindow* above = owner->window_->windowHandle())
            window_->windowHandle()->setTransientParent(above);
    }
    QEventLoop loop;
    WaitScope wait([&loop] { loop.exit(); });
    modalLoop_ = &loop;
    modalWait_ = &wait;
    present();
    // Form_Load or Form_Resize may have hidden the form or kept an exception.
    if (Visible() && !hasKept()) loop.exec();
    modalLoop_ = nullptr;
    modalWait_ = nullptr;
    rethrowKept();
}

// What is pressed on another window from now on waits: the caller of ShowModal
// hasn't yet taken what the dialog has left.
void Form::endModalLoop()
{
    if (!modalLoop_) return;
    modalLoop_->exit();
    modalWait_->end();
}

void Form::Unload()
{
    unload(UnloadMode::Code);
}

void Form::unload(UnloadMode mode)
{
    // An event may unload and load the form again; then the window is another one.
    const QPointer<QWidget> unloading = window_;
    if (!unloading) return;
    const InputHold hold;
    runEvent([&] { Form_QueryUnload(mode); });
    if (window_ == unloading) runEvent([this] { Form_Unload(); });
    // An Unload inside the event has already done the rest.
    if (unloading && window_ == unloading) destroyWindow();
    rethrowKept();
}

void Form::destroyWindow()
{
    std::erase(loadedForms(), this);
    const QPointer<QWidget> window = std::exchange(window_, nullptr);
    defaultButton_ = nullptr;
    cancelButton_ = nullptr;
    endModalLoop();
    if (!window) return;
    static_cast<FormWindow&>(*window).detach();
    window->hide();
    window->setEnabled(false); // presses made before have nothing left to press
    window->deleteLater();     // one of its own events may be running
}

// A window that isn't on the screen yet can't be painted, so the window manager
// gets a moment to show it.
void Form::Refresh()
{
    constexpr int kPatience = 300; // milliseconds
    const QDeadlineTimer patience(kPatience);
    const InputHold hold;
    DoEventsNow();
    while (Visible() && !window_->windowHandle()->isExposed() && !patience.hasExpired()) {
        QThread::msleep(1);
        DoEventsNow();
    }
    if (Visible()) window_->repaint();
}

bool Form::Visible() const
{
    return window_ && window_->isVisible();
}

void Form::setCaption(TextView caption)
{
    caption_ = caption;
    if (window_) window_->setWindowTitle(toQt(caption));
}

void Form::setBackColor(Colour colour)
{
    backColor_ = colour;
    if (!window_) return;
    QPalette palette = client().palette();
    palette.setColor(QPalette::Window, colourOf(colour));
    client().setPalette(palette);
}

void Form::setDefaultButton(CommandButton* button)
{
    defaultButton_ = button;
    if (button) button->setDefault(true); // drawn as one; the form handles the key
}

Control* Form::ActiveControl() const
{
    return window_ ? dynamic_cast<Control*>(window_->focusWidget()) : nullptr;
}

void Form::KeepFocusDuring(const std::function<void()>& switching)
{
    if (!window_) return switching();
    FormWindow& window = built(); // deleted later, whatever `switching` does
    window.setKeepsFocus(true);
    const auto end = qScopeGuard([&window] { window.setKeepsFocus(false); });
    switching();
}

void Form::SettleFocus()
{
    if (window_) built().settleFocus();
}

QWidget* Form::control(TextView name) const
{
    return window_ ? window_->findChild<QWidget*>(toQt(name)) : nullptr;
}

bool Form::keyPressed(int key)
{
    const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
    CommandButton* button = key == Qt::Key_Escape ? cancelButton_.data() : nullptr;
    if (enter && defaultButton_) {
        auto* focused = qobject_cast<CommandButton*>(window_->focusWidget());
        // Enter presses a focused button instead of the default one.
        button = focused ? focused : defaultButton_.data();
    }
    if (!button || !button->isVisible() || !button->isEnabled()) return false;
    button->click();
    return true;
}

}
