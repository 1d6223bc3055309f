#include "platform/forms/appearance.h"

#include "platform/forms/colours.h"
#include "platform/forms/events.h"
#include "platform/forms/menu.h"
#include "platform/forms/text_box.h"
#include "support/contrast.h"
#include "support/screen_driver.h"
#include "test_form.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMenuBar>
#include <QScrollBar>
#include <QSpinBox>
#include <QTimer>
#include <QToolTip>

#include <gtest/gtest.h>

namespace tolvek::test {

namespace {

constexpr QPalette::ColorGroup kGroups[] = {QPalette::Active, QPalette::Inactive,
                                            QPalette::Disabled};

struct Pair {
    QPalette::ColorRole text, paper;
};
constexpr Pair kPairs[] = {
    {QPalette::WindowText, QPalette::Window},
    {QPalette::Text, QPalette::Base},
    {QPalette::Text, QPalette::AlternateBase},
    {QPalette::ButtonText, QPalette::Button},
    {QPalette::HighlightedText, QPalette::Highlight},
    {QPalette::ToolTipText, QPalette::ToolTipBase},
    {QPalette::PlaceholderText, QPalette::Base},
    {QPalette::Link, QPalette::Base},
};

TEST(AppearanceTest, EveryKindOfTextIsReadableOnItsBackground)
{
    const QPalette& palette = lightPalette();
    for (const auto group : kGroups)
        for (const Pair& pair : kPairs)
            EXPECT_GE(contrast(palette.color(group, pair.text), palette.color(group, pair.paper)),
                      group == QPalette::Disabled ? kVisible : kReadable)
                << group << ' ' << pair.text;
}

TEST(AppearanceTest, CaptionsAreReadableOnTheMainWindowsLightBlue)
{
    const QColor lightBlue = colourOf(0x00FFC0C0);
    for (const auto role : {QPalette::WindowText, QPalette::ButtonText}) {
        EXPECT_GE(contrast(lightPalette().color(QPalette::Active, role), lightBlue), kReadable);
        EXPECT_GE(contrast(lightPalette().color(QPalette::Disabled, role), lightBlue), kVisible);
    }
}

// A desktop's theme sets the application's palette, those of single classes, and that
// of the tool tips.
class DarkDesktop {
public:
    DarkDesktop()
    {
        QApplication::setPalette(darkPalette());
        for (const char* kind : {"QMenu", "QMenuBar", "QLineEdit", "QHeaderView"})
            QApplication::setPalette(darkPalette(), kind);
        QToolTip::setPalette(darkPalette());
    }
    ~DarkDesktop()
    {
        QApplication::setPalette(lightPalette());
        QToolTip::setPalette(lightPalette());
    }
};

TEST(AppearanceTest, ADarkDesktopChangesNothing)
{
    const DarkDesktop dark;
    prepareApplication();
    QMenu menu;
    QMenuBar bar;
    QLineEdit edit;
    QPushButton button;
    for (const QWidget* widget : std::initializer_list<QWidget*>{&menu, &bar, &edit, &button})
        for (const auto group : kGroups)
            for (const Pair& pair : kPairs) {
                EXPECT_EQ(widget->palette().color(group, pair.text),
                          lightPalette().color(group, pair.text));
                EXPECT_EQ(widget->palette().color(group, pair.paper),
                          lightPalette().color(group, pair.paper));
            }
    EXPECT_EQ(QToolTip::palette().color(QPalette::ToolTipBase),
              lightPalette().color(QPalette::ToolTipBase));
    EXPECT_EQ(QApplication::style()->objectName().toLower(), QStringLiteral("fusion"));
}

void listWords(const QMenu& menu, QStringList& words)
{
    for (const QAction* action : menu.actions()) {
        if (action->isVisible() && !action->isSeparator()) words += action->text();
        if (action->menu()) listWords(*action->menu(), words);
    }
}

// The entries of the widget's context menu.
QStringList contextWords(QWidget& widget)
{
    QStringList words;
    // Some menus run an event loop of their own until they are closed.
    const auto look = [&words] {
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (!menu) return;
        listWords(*menu, words);
        menu->close();
    };
    QTimer::singleShot(0, &widget, look);
    QContextMenuEvent asked(QContextMenuEvent::Mouse, QPoint(5, 5),
                            widget.mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(&widget, &asked);
    QCoreApplication::processEvents();
    look();
    return words;
}

bool isAscii(const QString& text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
}

TEST(AppearanceTest, ContextMenusAreJapanese)
{
    prepareApplication();
    ShownForm form;
    auto& line = form.add<TextBox>(u"txtLine");
    auto& lines = form.add<MultiLineTextBox>(u"txtLines");
    auto& locked = form.add<MultiLineTextBox>(u"txtLocked");
    locked.setLocked(true);
    QSpinBox number(&form.client());
    form.Show();
    for (QWidget* widget : std::initializer_list<QWidget*>{
             &line, lines.viewport(), locked.viewport(), &number, lines.verticalScrollBar()}) {
        const QStringList words = contextWords(*widget);
        EXPECT_FALSE(words.isEmpty()) << widget->metaObject()->className();
        for (const QString& word : words)
            EXPECT_FALSE(isAscii(word)) << word.toStdString();
    }
}

}

}
