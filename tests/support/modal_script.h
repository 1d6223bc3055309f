// The steps of a test at a modal form, while the routine that shows it waits.
//
//     ModalScript dialog("frmMailReadOpt", [](QWidget& shown) {
//         press(shown, "cmbMail_Ok");
//     });
//     comMailRead_Click(form);
//
// The steps run once, as soon as a modal window of that name is shown. If it is never
// shown, the test fails.
#pragma once
#include "platform/forms/buttons.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QTimer>

#include <functional>
#include <stdexcept>
#include <string>

namespace tolvek::test {

class ModalScript {
public:
    ModalScript(const char* name, std::function<void(QWidget&)> steps)
        : name_(name), steps_(std::move(steps))
    {
        QObject::connect(&timer_, &QTimer::timeout, [this] { look(); });
        timer_.start(0);
    }
    ~ModalScript() { EXPECT_TRUE(done_) << "never shown: " << name_.toStdString(); }
    ModalScript(const ModalScript&) = delete;
    ModalScript& operator=(const ModalScript&) = delete;

private:
    void look()
    {
        QWidget* const shown = QApplication::activeModalWidget();
        if (done_ || !shown || shown->objectName() != name_) return;
        done_ = true;
        timer_.stop();
        steps_(*shown);
    }

    QString name_;
    std::function<void(QWidget&)> steps_;
    QTimer timer_;
    bool done_ = false;
};

// A control of a form's window by its name; if it doesn't exist, the test ends.
template <class T> T& controlOf(QWidget& window, const char* name)
{
    T* const found = window.findChild<T*>(QString::fromLatin1(name));
    if (!found) throw std::logic_error(std::string("no control ") + name);
    return *found;
}

inline void press(QWidget& window, const char* button)
{
    controlOf<CommandButton>(window, button).click();
}

}
