// What every form looks like on other desktops.
#include "every_form.h"
#include "platform/forms/appearance.h"
#include "support/contrast.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>

namespace tolvek::test {

namespace {

class SeenFormsTest : public EveryForm {
protected:
    void SetUp() override
    {
        QApplication::setPalette(darkPalette());
        EveryForm::SetUp();
    }
};

Text captionOf(const QWidget& widget)
{
    if (const auto* label = qobject_cast<const Label*>(&widget)) return label->Caption();
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget))
        return fromQt(button->text());
    if (const auto* frame = qobject_cast<const Frame*>(&widget)) return frame->Caption();
    return {};
}

// As painted: the highest contrast of a caption's pixels.
void expectReadable(QWidget& window, QWidget& widget, double least)
{
    const QPoint corner = widget.mapTo(&window, QPoint());
    const QImage picture = window.grab(QRect(corner, widget.size())).toImage();
    EXPECT_GE(inkContrast(picture), least) << widget.objectName().toStdString();
}

void expectCaptionsReadable(const Form& form, double least)
{
    for (QWidget* widget : form.client().findChildren<QWidget*>())
        if (widget->isVisible() && !trim(captionOf(*widget)).empty())
            expectReadable(*form.window(), *widget, least);
}

TEST_F(SeenFormsTest, EveryCaptionIsReadableOnADarkDesktop)
{
    atEveryForm([](Form& shown) { expectCaptionsReadable(shown, kReadable); });
}

TEST_F(SeenFormsTest, ADisabledCaptionStaysVisible)
{
    atEveryForm([](Form& shown) {
        shown.client().setEnabled(false);
        expectCaptionsReadable(shown, kVisible);
        shown.client().setEnabled(true);
    });
}

TEST_F(SeenFormsTest, ListsAndTheMailAreBlackOnWhite)
{
    atEveryForm([](Form& shown) {
        for (QWidget* box : shown.client().findChildren<QWidget*>()) {
            if (!qobject_cast<QAbstractScrollArea*>(box) && !qobject_cast<QLineEdit*>(box))
                continue;
            EXPECT_EQ(box->palette().color(QPalette::Text), QColor(Qt::black));
            EXPECT_EQ(box->palette().color(QPalette::Base), QColor(Qt::white));
        }
    });
}

TEST_F(SeenFormsTest, MenusAreReadableOnADarkDesktop)
{
    form.Show();
    EXPECT_GE(inkContrast(form.menuBar().grab().toImage()), kReadable);
    for (const MenuEntry* entry : form.window()->findChildren<MenuEntry*>())
        if (QMenu* menu = entry->menu()) {
            EXPECT_GE(inkContrast(menu->grab().toImage()), kReadable) << toUtf8(entry->Name());
        }
}

}

}
