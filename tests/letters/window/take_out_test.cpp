#include "letters/window/take_out.h"

#include "letters/letters_fixture.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QEventLoop>
#include <QRadioButton>
#include <QWidget>

#include <optional>

namespace tolvek::test {
namespace {

TEST(TakeOutDialog, OffersTheSelectionOnlyWhenItIsMoreThanTheLetterOnDisplay)
{
    EXPECT_FALSE(TakeOutDialog(1, 20).choice().selectionOnly);
    EXPECT_TRUE(TakeOutDialog(2, 20).choice().selectionOnly);
    EXPECT_FALSE(TakeOutDialog(0, 20).choice().selectionOnly);
}

TEST(TakeOutDialog, ProposesAFileForEachForm)
{
    TakeOutDialog dialog(0, 3);
    const std::pair<TakeOut::Form, const char*> forms[] = {{TakeOut::Form::Book, ".pdf"},
                                                           {TakeOut::Form::Html, ".html"},
                                                           {TakeOut::Form::PlainText, ".txt"},
                                                           {TakeOut::Form::Mbox, ".mbox"},
                                                           {TakeOut::Form::EmlFolder, ""}};
    for (const auto& [form, extension] : forms) {
        dialog.setForm(form);
        EXPECT_EQ(dialog.choice().form, form);
        EXPECT_EQ(dialog.choice().target.extension(), extension);
    }
}

TEST(TakeOutDialog, TheBooksPaperAndTitleAreChosen)
{
    TakeOutDialog dialog(0, 3);
    EXPECT_EQ(dialog.choice().book.paper, BookPaper::A5);
    dialog.findChild<QComboBox*>(QStringLiteral("paper"))->setCurrentIndex(1);
    EXPECT_EQ(dialog.choice().book.paper, BookPaper::A4);
    EXPECT_FALSE(dialog.choice().book.title.isEmpty());
}

class TakeOutRunTest : public LettersFixture {
protected:
    void SetUp() override
    {
        LettersFixture::SetUp();
        store(with(u"older", u"text", u"19990101"));
        store(with(u"newer", u"text", u"20000101"));
    }
    std::string endOf(TakeOutRun& run)
    {
        std::optional<std::string> words;
        QObject::connect(&run, &TakeOutRun::ended,
                         [&](bool, const QString& said) { words = said.toStdString(); });
        while (!words)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        EXPECT_FALSE(run.isRunning());
        return *words;
    }

    QWidget window;
};

TEST_F(TakeOutRunTest, WritesTheFileAndSaysSo)
{
    TakeOutRun run(window);
    TakeOut choice;
    choice.target = folder / "book.pdf";
    run.takeOut(library(), {0, 1}, choice);
    EXPECT_TRUE(run.isRunning());
    EXPECT_NE(endOf(run).find("2 通を取り出しました"), std::string::npos);
    EXPECT_TRUE(exists("book.pdf"));
}

TEST_F(TakeOutRunTest, TakesOutOldestFirst)
{
    TakeOutRun run(window);
    TakeOut choice;
    choice.form = TakeOut::Form::PlainText;
    choice.target = folder / "letters.txt";
    run.takeOut(library(), {0, 1}, choice);
    endOf(run);
    const std::string text = readBytes(folder / "letters.txt");
    EXPECT_LT(text.find("older"), text.find("newer"));
}

TEST_F(TakeOutRunTest, ACancelLeavesNoFile)
{
    TakeOutRun run(window);
    TakeOut choice;
    choice.target = folder / "book.pdf";
    std::vector<LetterId> many(2000, 0);
    run.takeOut(library(), many, choice);
    run.cancel();
    EXPECT_FALSE(run.isRunning());
    EXPECT_FALSE(exists("book.pdf"));
}

}
}
