#include "letters/window/letter_view.h"

#include "letters/letters_fixture.h"
#include "letters/window/colours.h"
#include "platform/forms/appearance.h"
#include "platform/forms/qt_text.h"

#include <QTest>
#include <QWheelEvent>

namespace tolvek::test {
namespace {

class LetterViewTest : public LettersFixture {
protected:
    void show(TextView typed, TextView subject, TextView text)
    {
        store(with(subject, text));
        view.showLetter(library(), 0, parseQuery(typed));
    }
    std::string marked() const
    {
        std::string all;
        for (const auto& selection : view.extraSelections())
            all += "[" + selection.cursor.selectedText().toStdString() + "]";
        return all;
    }
    std::string reached() const
    {
        const LetterColours colours = coloursFor(view.palette());
        for (const auto& selection : view.extraSelections())
            if (selection.format.background().color() == colours.current)
                return std::to_string(selection.cursor.selectionStart()) + " " +
                       selection.cursor.selectedText().toStdString();
        return "none";
    }

    LetterView view;
};

TEST_F(LetterViewTest, ShowsHeadingsAndTextAsTheyAre)
{
    show(u"", u"<b>旅行</b>", u"一行目\r\n\r\n<img src=x> &amp;\r\n");
    const std::string text = view.toPlainText().toStdString();
    EXPECT_NE(text.find("<b>旅行</b>\n"), std::string::npos);
    EXPECT_NE(text.find("花子 <hanako@example.jp>"), std::string::npos);
    EXPECT_NE(text.find("Tolvek.Mdb"), std::string::npos);
    EXPECT_NE(text.find("\n一行目\n\n<img src=x> &amp;\n"), std::string::npos);
    EXPECT_EQ(marked(), "");
}

TEST_F(LetterViewTest, MarksHitsInHeadingsAndText)
{
    show(u"ﾘｮｺｳ 花", u"花とりょこう", u"リョコウの話\r\n花");
    EXPECT_EQ(marked(), "[花][りょこう][花][リョコウ][花]");
}

TEST_F(LetterViewTest, WordsOfOneSideAreMarkedThereAlone)
{
    show(u"差出人:花", u"花", u"花");
    EXPECT_EQ(marked(), "[花]");
    EXPECT_NE(view.toPlainText().indexOf(QStringLiteral("花子")), -1);
}

TEST_F(LetterViewTest, F3GoesFromHitToHitAndBack)
{
    show(u"花", u"見出し", u"花\r\n中\r\n花");
    ASSERT_EQ(view.hitCount(), 3) << "the sender's name is one";
    EXPECT_EQ(reached(), "none");
    EXPECT_TRUE(view.nextHit());
    EXPECT_TRUE(view.nextHit());
    const std::string second = reached();
    EXPECT_TRUE(view.nextHit());
    EXPECT_NE(reached(), second);
    EXPECT_FALSE(view.nextHit());
    EXPECT_TRUE(view.previousHit());
    EXPECT_EQ(reached(), second);
}

TEST_F(LetterViewTest, AnotherPaletteGivesOtherMarks)
{
    show(u"花", u"花", u"花");
    view.nextHit();
    QPalette dark = tolvek::darkPalette();
    view.setPalette(dark);
    EXPECT_EQ(view.extraSelections().at(1).format.background().color(), coloursFor(dark).mark);
}

TEST_F(LetterViewTest, CtrlAndTheWheelChangeTheSize)
{
    show(u"", u"a", u"b");
    int steps = 0;
    QObject::connect(&view, &LetterView::zoomed, [&](int by) { steps += by; });
    const auto turn = [&](int by, Qt::KeyboardModifiers modifiers) {
        QWheelEvent event(QPointF(5, 5), QPointF(5, 5), QPoint(), QPoint(0, by), Qt::NoButton,
                          modifiers, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(view.viewport(), &event);
    };
    turn(120, Qt::ControlModifier);
    turn(120, Qt::ControlModifier);
    turn(-120, Qt::ControlModifier);
    turn(120, Qt::NoModifier);
    EXPECT_EQ(steps, 1);
}

TEST_F(LetterViewTest, VeryManyHitsAreMarkedUpToALimit)
{
    show(u"花", u"a", Text(20000, u'花'));
    EXPECT_LE(view.hitCount(), 2000);
}

}
}
