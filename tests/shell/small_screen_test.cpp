// Every form on screens that are smaller than it.
#include "every_form.h"
#include "support/small_screen.h"

#include <QApplication>
#include <QMenuBar>
#include <QScrollBar>

#include <map>

namespace tolvek::test {

namespace {

class SmallScreenTest : public EveryForm {};

struct Size {
    float width, height;
    bool operator==(const Size&) const = default;
};

// The part of the window in which its client area is shown.
QRect viewOf(const Form& shown)
{
    QRect view = shown.window()->rect();
    if (const auto* bar = shown.window()->findChild<QMenuBar*>()) view.setTop(bar->height());
    for (const QScrollBar* bar :
         shown.window()->findChildren<QScrollBar*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (!bar->isVisible()) continue;
        if (bar->orientation() == Qt::Vertical)
            view.setRight(bar->x() - 1);
        else
            view.setBottom(bar->y() - 1);
    }
    return view;
}

// A large control is reached when its beginning is shown.
bool isReached(const QWidget& control, const QRect& view)
{
    const QRect place(control.mapTo(control.window(), QPoint()), control.size());
    const QRect wanted(place.topLeft(), place.size().boundedTo(view.size()));
    return view.contains(wanted);
}

void expectAllReachable(const Form& shown)
{
    for (QWidget* control : shown.client().findChildren<QWidget*>()) {
        if (!dynamic_cast<Control*>(control) || control->focusPolicy() == Qt::NoFocus) continue;
        if (!control->isEnabled()) continue;
        control->setFocus();
        EXPECT_TRUE(isReached(*control, viewOf(shown))) << control->objectName().toStdString();
    }
}

TEST_F(SmallScreenTest, EveryFormKeepsItsSizeAndEachOfItsControlsCanBeReached)
{
    std::map<Text, Size> designed;
    const auto sizeOf = [](const Form& shown) { return Size{shown.Width(), shown.Height()}; };
    {
        const SmallScreen large(2000, 2000);
        atEveryForm([&](Form& shown) { designed[shown.Name()] = sizeOf(shown); });
    }
    for (const QSize room : {QSize(1092, 584), QSize(640, 440), QSize(400, 300)}) {
        const SmallScreen small(room.width(), room.height());
        atEveryForm([&](Form& shown) {
            EXPECT_EQ(sizeOf(shown), designed[shown.Name()]);
            EXPECT_LE(shown.window()->width(), room.width());
            EXPECT_LE(shown.window()->height(), room.height());
            expectAllReachable(shown);
        });
    }
}

}

}
