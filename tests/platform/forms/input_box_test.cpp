#include "platform/forms/input_box.h"
#include "platform/forms/qt_text.h"
#include "platform/forms/test_hooks.h"

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace tolvek::test {

namespace {

void whenShown(std::function<void(QDialog&, QLineEdit&)> act)
{
    QTimer::singleShot(0, [act = std::move(act)] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        act(*dialog, *dialog->findChild<QLineEdit*>());
    });
}

QPushButton* buttonOf(const QDialog& dialog, TextView caption)
{
    for (QPushButton* button : dialog.findChildren<QPushButton*>())
        if (fromQt(button->text()) == caption) return button;
    return nullptr;
}

TEST(InputBoxTest, OkGivesWhatWasTyped)
{
    whenShown([](QDialog& dialog, QLineEdit& edit) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("おともだちの名前変更"));
        EXPECT_EQ(dialog.findChild<QLabel*>()->text(), QStringLiteral("<prompt>"));
        EXPECT_EQ(edit.text(), QStringLiteral("太郎"));
        QTest::keyClicks(&edit, QStringLiteral("hana"));
        buttonOf(dialog, u"OK")->click();
    });
    EXPECT_EQ(InputBox(u"<prompt>", u"おともだちの名前変更", u"太郎"), u"hana");
}

TEST(InputBoxTest, APastedTextIsHeldAsInATextBox)
{
    whenShown([](QDialog& dialog, QLineEdit& edit) {
        QGuiApplication::clipboard()->setText(QStringLiteral("は\u309A〜\t子\r\n"));
        QTest::keySequence(&edit, QKeySequence::Paste);
        buttonOf(dialog, u"OK")->click();
    });
    EXPECT_EQ(InputBox(u"p", u"t", u"太郎"), u"ぱ～子");
}

TEST(InputBoxTest, CancelAndEscapeGiveAnEmptyText)
{
    whenShown([](QDialog& dialog, QLineEdit&) { buttonOf(dialog, u"キャンセル")->click(); });
    EXPECT_EQ(InputBox(u"p", u"t", u"太郎"), u"");
    whenShown([](QDialog& dialog, QLineEdit&) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    EXPECT_EQ(InputBox(u"p", u"t", u"太郎"), u"");
}

TEST(InputBoxTest, AHandlerTakesTheScreensPlace)
{
    hooks::setInputBox([](const InputBoxRequest& box) { return box.prompt + box.defaultText; });
    EXPECT_EQ(InputBox(u"p", u"t", u"d"), u"pd");
    hooks::setInputBox({});
}

}

}
