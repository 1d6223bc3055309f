#include "platform/forms/font_dialog.h"
#include "platform/forms/test_hooks.h"

#include "platform/forms/fonts.h"
#include "platform/forms/qt_text.h"
#include "support/errors.h"
#include "support/modal_script.h"

#include <QCheckBox>
#include <QDialog>
#include <QFontDatabase>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>

#include <gtest/gtest.h>

namespace tolvek::test {

namespace {

// The dialog as the user sees it.
struct Shown {
    explicit Shown(QWidget& window)
        : dialog(window), faces(controlOf<QListWidget>(window, "faces")),
          size(controlOf<QSpinBox>(window, "size")), bold(controlOf<QCheckBox>(window, "bold")),
          italic(controlOf<QCheckBox>(window, "italic")),
          sample(controlOf<QLabel>(window, "sample"))
    {
    }
    Text face() const { return fromQt(faces.currentItem()->text()); }
    void choose(TextView name)
    {
        const auto rows = faces.findItems(toQt(name), Qt::MatchExactly);
        ASSERT_EQ(rows.size(), 1) << toUtf8(name);
        faces.setCurrentItem(rows.front());
    }
    void enterSize(const QString& digits)
    {
        size.selectAll();
        QTest::keyClicks(&size, digits);
    }
    void pressButton(TextView caption)
    {
        for (QPushButton* button : dialog.findChildren<QPushButton*>())
            if (fromQt(button->text()) == caption) return button->click();
        ADD_FAILURE() << "no button " << toUtf8(caption);
    }
    void ok() { pressButton(u"OK"); }
    void cancel() { pressButton(u"キャンセル"); }

    QWidget& dialog;
    QListWidget& faces;
    QSpinBox& size;
    QCheckBox &bold, &italic;
    QLabel& sample;
};

class FontDialogTest : public testing::Test {
protected:
    FontDialogTest()
    {
        font.CancelError = true;
        font.Flags = kScreenFonts;
        font.setFontName(u"ＭＳ ゴシック");
        font.setFontSize(10);
    }
    ~FontDialogTest() override { hooks::setFontDialog({}); }

    // Shows it and returns the number of the error that it ends with.
    int show(const std::function<void(Shown&)>& steps)
    {
        const ModalScript script("FontDialog", [&](QWidget& window) {
            Shown shown(window);
            steps(shown);
        });
        return errorOf([&] { font.ShowFont(nullptr); });
    }
    void expectFields(TextView name, float size, bool bold, bool italic) const
    {
        EXPECT_EQ(font.FontName(), name);
        EXPECT_EQ(font.FontSize(), size);
        EXPECT_EQ(font.FontBold(), bold);
        EXPECT_EQ(font.FontItalic(), italic);
    }

    FontDialog font;
};

TEST_F(FontDialogTest, ShowsTheFieldsAndGivesThemBackUnchanged)
{
    for (const bool bold : {false, true})
        for (const bool italic : {false, true}) {
            font.setFontBold(bold);
            font.setFontItalic(italic);
            EXPECT_EQ(show([&](Shown& shown) {
                          EXPECT_EQ(shown.face(), u"ＭＳ ゴシック");
                          EXPECT_EQ(shown.size.value(), 10);
                          EXPECT_EQ(shown.bold.isChecked(), bold);
                          EXPECT_EQ(shown.italic.isChecked(), italic);
                          shown.ok();
                      }),
                      0);
            expectFields(u"ＭＳ ゴシック", 10, bold, italic);
        }
}

TEST_F(FontDialogTest, TakesOverWhatItsUserChooses)
{
    EXPECT_EQ(show([](Shown& shown) {
                  shown.choose(u"ＭＳ 明朝");
                  shown.enterSize(QStringLiteral("14"));
                  shown.bold.click();
                  shown.italic.click();
                  shown.ok();
              }),
              0);
    expectFields(u"ＭＳ 明朝", 14, true, true);
}

TEST_F(FontDialogTest, AnInstalledFaceGoesByItsOwnName)
{
    const QString family = QFontDatabase::families().first();
    EXPECT_EQ(show([&](Shown& shown) {
                  shown.choose(fromQt(family));
                  shown.ok();
              }),
              0);
    EXPECT_EQ(font.FontName(), fromQt(family));
}

TEST_F(FontDialogTest, AFaceThatIsntInstalledIsKeptByItsName)
{
    font.setFontName(u"どこにもない書体");
    EXPECT_EQ(show([](Shown& shown) {
                  EXPECT_EQ(shown.face(), u"どこにもない書体");
                  shown.enterSize(QStringLiteral("12"));
                  shown.ok();
              }),
              0);
    expectFields(u"どこにもない書体", 12, false, false);
}

TEST_F(FontDialogTest, NoNameIsTheFirstFaceOfTheList)
{
    font.setFontName(u"");
    EXPECT_EQ(show([](Shown& shown) {
                  EXPECT_EQ(shown.face(), u"ＭＳ ゴシック");
                  shown.ok();
              }),
              0);
    EXPECT_EQ(font.FontName(), u"ＭＳ ゴシック");
}

TEST_F(FontDialogTest, AFractionOfTheSizeStaysUnlessAnotherSizeIsChosen)
{
    font.setFontSize(9.75F);
    EXPECT_EQ(show([](Shown& shown) { shown.ok(); }), 0);
    EXPECT_EQ(font.FontSize(), 9.75F);
    EXPECT_EQ(show([](Shown& shown) {
                  shown.enterSize(QStringLiteral("9"));
                  shown.ok();
              }),
              0);
    EXPECT_EQ(font.FontSize(), 9);
}

TEST_F(FontDialogTest, EachFaceStandsOnceAndTheProgramsOwnComeFirst)
{
    show([](Shown& shown) {
        const auto own = programFontNames();
        for (std::size_t i = 0; i < own.size(); ++i)
            EXPECT_EQ(fromQt(shown.faces.item(static_cast<int>(i))->text()), own[i]);
        for (int row = 0; row < shown.faces.count(); ++row)
            EXPECT_EQ(shown.faces.findItems(shown.faces.item(row)->text(), Qt::MatchExactly).size(),
                      1);
        shown.cancel();
    });
}

TEST_F(FontDialogTest, TheSampleShowsTheChoice)
{
    show([](Shown& shown) {
        shown.choose(u"ＭＳ Ｐ明朝");
        shown.enterSize(QStringLiteral("18"));
        shown.bold.click();
        EXPECT_EQ(shown.sample.font().family(), installedFamily(u"ＭＳ Ｐ明朝"));
        EXPECT_EQ(shown.sample.font().pixelSize(), 24);
        EXPECT_TRUE(shown.sample.font().bold());
        EXPECT_FALSE(shown.sample.font().italic());
        shown.cancel();
    });
}

TEST_F(FontDialogTest, EveryRoadOutButOkIsTheCancelErrorAndChangesNothing)
{
    const std::function<void(Shown&)> roads[] = {
        [](Shown& shown) { shown.cancel(); },
        [](Shown& shown) { QTest::keyClick(&shown.faces, Qt::Key_Escape); },
        [](Shown& shown) { shown.dialog.close(); },
    };
    for (const auto& leave : roads) {
        EXPECT_EQ(show([&](Shown& shown) {
                      shown.choose(u"ＭＳ 明朝");
                      shown.enterSize(QStringLiteral("14"));
                      shown.bold.click();
                      leave(shown);
                  }),
                  kDialogCancelled);
        expectFields(u"ＭＳ ゴシック", 10, false, false);
    }
}

TEST_F(FontDialogTest, WithoutCancelErrorACancelIsNoFailure)
{
    font.CancelError = false;
    EXPECT_EQ(show([](Shown& shown) { shown.cancel(); }), 0);
    expectFields(u"ＭＳ ゴシック", 10, false, false);
}

TEST_F(FontDialogTest, EnterIsOk)
{
    EXPECT_EQ(show([](Shown& shown) {
                  shown.choose(u"ＭＳ 明朝");
                  QTest::keyClick(&shown.faces, Qt::Key_Return);
              }),
              0);
    EXPECT_EQ(font.FontName(), u"ＭＳ 明朝");
}

TEST_F(FontDialogTest, SizesThatNoFontHasAreError380)
{
    for (const float size : {0.0F, -1.0F, 2160.5F, std::nanf("")})
        EXPECT_EQ(errorOf([&] { font.setFontSize(size); }), 380) << size;
    EXPECT_EQ(font.FontSize(), 10);
    font.setFontSize(2160);
    EXPECT_EQ(font.FontSize(), 2160);
}

TEST_F(FontDialogTest, NoKindOfFontsAmongTheFlagsIsAnError)
{
    font.Flags = 0;
    EXPECT_EQ(errorOf([&] { font.ShowFont(nullptr); }), kNoFonts);
}

TEST_F(FontDialogTest, AHookTakesTheScreensPlace)
{
    hooks::setFontDialog([](FontDialogFields& fields) {
        EXPECT_EQ(fields.FontName, u"ＭＳ ゴシック");
        fields.FontSize = 12.5F;
        fields.FontItalic = true;
        return true;
    });
    font.ShowFont(nullptr);
    expectFields(u"ＭＳ ゴシック", 12.5F, false, true);
    hooks::setFontDialog([](FontDialogFields& fields) {
        fields.FontSize = 30;
        return false;
    });
    EXPECT_EQ(errorOf([&] { font.ShowFont(nullptr); }), kDialogCancelled);
    EXPECT_EQ(font.FontSize(), 12.5F);
}

TEST_F(FontDialogTest, FacesForJapaneseComeBeforeTheOthers)
{
    show([](Shown& shown) {
        bool japanese = true;
        for (int row = 0; row < shown.faces.count(); ++row) {
            const QString face = installedFamily(fromQt(shown.faces.item(row)->text()));
            const bool now = QFontDatabase::writingSystems(face).contains(QFontDatabase::Japanese);
            EXPECT_TRUE(japanese || !now) << face.toStdString();
            japanese = now;
        }
        EXPECT_FALSE(japanese) << "no other face is installed";
        shown.cancel();
    });
}

TEST_F(FontDialogTest, TheSampleGrowsWithItsTextUpToALimit)
{
    show([](Shown& shown) {
        shown.enterSize(QStringLiteral("9"));
        QCoreApplication::processEvents();
        const QSize small = shown.sample.size();
        shown.enterSize(QStringLiteral("48"));
        QCoreApplication::processEvents();
        EXPECT_GT(shown.sample.height(), small.height());
        EXPECT_GE(shown.sample.height(), shown.sample.fontMetrics().height());
        shown.enterSize(QStringLiteral("2000"));
        QCoreApplication::processEvents();
        EXPECT_LE(shown.dialog.height(), 600);
        EXPECT_LE(shown.dialog.width(), 700);
        shown.cancel();
    });
}

}

}
