// The Qt window of one loaded form: the menu bar at the top, the area for the
// controls below. Reports the user's actions to its form.
//
// The client area always has the size that the form asks for. A window for which the
// screen has no room is smaller and scrolls.
#pragma once
#include "platform/forms/client_scroll.h"

#include <QWidget>

class QMenuBar;

namespace tolvek {

class Form;

class FormWindow : public QWidget {
    Q_OBJECT
public:
    FormWindow(Form& form, Qt::WindowFlags flags);

    QWidget& client() { return *client_; }
    QMenuBar& menuBar();
    int menuBarHeight() const;
    // The window is as large as the screen allows; the user can't change a fixed one.
    void setClientSize(const QSize& size, bool fixed);
    // Changes the client area of a window that keeps its size, as a maximised one does.
    void setContentSize(const QSize& size);
    // Where to put the corner of the frame: a window that the screen has cut to its
    // own size is moved onto the screen.
    QPoint fitting(const QPoint& corner) const;
    bool isDialog() const;
    void setKeepsFocus(bool keeps) { keepsFocus_ = keeps; }
    void settleFocus();
    // From now on the form receives nothing more and no timer ticks.
    void detach();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool focusNextPrevChild(bool next) override;

private:
    QSize frame() const;
    QRect view() const;
    void arrange();
    void reportSize(Form& form);
    bool pressedForMenu(const QKeyEvent& event);
    void enterMenuBar();

    Form* form_;
    QWidget* client_;
    QMenuBar* menuBar_ = nullptr;
    ClientScroll scroll_;
    bool fixed_ = false;
    bool keepsFocus_ = false;
    // As set last by the form: the client area, and the window in which it is shown.
    QSize askedClient_, askedWindow_;
    QSize refused_; // the size of the window that the form has changed last
    bool reporting_ = false;
    bool insisted_ = false;
    QSize content_; // of the client area at present
};

}
