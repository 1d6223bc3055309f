// The main function of every test program with windows: one QApplication for all tests,
// on the offscreen platform unless another is requested.
#include <QApplication>
#include <QEvent>

#include <gtest/gtest.h>

#include <pthread.h>

namespace {

bool isCopy = false;

// A forked copy of the program doesn't paint: the toolkit would hand large areas to
// painting threads, which exist only in the first process, and wait for them for ever.
class PaintingOfTheFirstAlone : public QObject {
protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        return isCopy &&
               (event->type() == QEvent::UpdateRequest || event->type() == QEvent::Expose);
    }
};

}

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    PaintingOfTheFirstAlone painting;
    QApplication::instance()->installEventFilter(&painting);
    pthread_atfork(nullptr, nullptr, [] { isCopy = true; });
    return RUN_ALL_TESTS();
}
