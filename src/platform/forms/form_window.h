// The Qt window of one loaded form: the menu bar at the top, the area for the
// controls below. Reports the user's actions to its form.
#pragma once
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
    void setClientSize(const QSize& size, bool fixed);
    // From now on the form receives nothing more and no timer ticks.
    void detach();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void arrange();

    Form* form_;
    QWidget* client_;
    QMenuBar* menuBar_ = nullptr;
};

}
