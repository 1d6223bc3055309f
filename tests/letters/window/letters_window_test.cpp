// The window on archives of its own: what is typed, dragged and picked, and what is shown
// for it.
#include "letters/window/letters_window.h"

#include "letters/letters_fixture.h"
#include "letters/window/colours.h"
#include "letters/window/letter_view.h"
#include "letters/window/results_model.h"
#include "letters/window/year_strip.h"
#include "platform/forms/qt_text.h"
#include "support/painted.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QTableView>
#include <QTest>
#include <QToolButton>

#include <set>

namespace tolvek::test {
namespace {

// Those of X11 desktops aren't in force on the offscreen platform.
bool isEditingKey(const QKeySequence& keys)
{
    for (const char* const taken :
         {"Ctrl+A", "Ctrl+C", "Ctrl+D", "Ctrl+E", "Ctrl+K", "Ctrl+U", "Ctrl+V", "Ctrl+W", "Ctrl+X",
          "Ctrl+Y", "Ctrl+Z", "Ctrl+Shift+Z", "Ctrl+Backspace", "Ctrl+Del", "Ctrl+Home",
          "Ctrl+End"})
        if (keys == QKeySequence(QString::fromLatin1(taken))) return true;
    return false;
}

bool takesForItself(QWidget& part, QKeyCombination keys)
{
    QKeyEvent asked(QEvent::ShortcutOverride, keys.key(), keys.keyboardModifiers());
    asked.ignore();
    QCoreApplication::sendEvent(&part, &asked);
    return asked.isAccepted();
}

class LettersWindowTest : public LettersFixture {
protected:
    void TearDown() override
    {
        window.reset();
        LettersFixture::TearDown();
    }

    void givenLetters()
    {
        store(with(u"旅行の話", u"京都は雨でした。\r\n桜は散っていました。", u"20000215"));
        store(with(u"花見", u"桜が満開です。", u"20010401"));
        Mail sent = mail(u"taro@example.jp", u"hanako@example.jp", u"Re: 花見", u"20010402");
        sent.SndRcvFlag = true;
        sent.SndName = u"太郎";
        sent.RcvName = u"花子";
        sent.Mail1 = u"桜を見に行きます。";
        store(sent);
        Mail other = mail(u"ken@example.org", u"taro@example.jp", u"星", u"20020101");
        other.SndName = u"けん";
        other.Mail1 = u"星を見ました。";
        store(other);
    }
    void open(Text person = {})
    {
        LettersStart start;
        start.folder = folder.path();
        start.person = std::move(person);
        start.desk.retryMilliseconds = 1;
        start.settingsFile = settings;
        window = std::make_unique<LettersWindow>(std::move(start));
        window->show();
        settle();
    }
    void settle()
    {
        while (!window->isSettled())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    template <class T> T& part(const char* name)
    {
        T* const found = window->findChild<T*>(QString::fromLatin1(name));
        if (!found) throw std::logic_error(name);
        return *found;
    }
    void type(const char* words)
    {
        part<QLineEdit>("field").setText(QString::fromUtf8(words));
        settle();
    }
    Lines subjects() { return column("results", ResultsModel::Subject); }
    Lines column(const char* list, int number)
    {
        Lines texts;
        const auto& model = *part<QTableView>(list).model();
        for (int row = 0; row < model.rowCount(); ++row)
            texts.push_back(model.index(row, number).data().toString().toStdString());
        return texts;
    }
    void pick(const char* list, int row)
    {
        part<QTableView>(list).selectRow(row);
        settle();
    }
    LetterView& letter() { return part<LetterView>("letter"); }
    std::string shown()
    {
        const QString text = letter().toPlainText();
        return text.section(u'\n', 0, 0).section(u'\t', 1).toStdString();
    }
    YearStrip& strip() { return *window->findChild<YearStrip*>(); }
    std::vector<QToolButton*> chips()
    {
        std::vector<QToolButton*> shownOnes;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        for (QToolButton* chip : window->findChildren<QToolButton*>())
            if (chip->text().contains(u'✕')) shownOnes.push_back(chip);
        return shownOnes;
    }
    void trigger(const QKeySequence& keys)
    {
        for (QAction* const action : window->findChildren<QAction*>())
            if (action->shortcuts().contains(keys)) return action->trigger();
        FAIL() << keys.toString().toStdString();
    }
    std::string status() { return window->statusBar()->findChild<QLabel*>()->text().toStdString(); }

    QString settings;
    std::unique_ptr<LettersWindow> window;
};

TEST_F(LettersWindowTest, ShowsAllLettersNewestFirstAndTheFirstOfThem)
{
    givenLetters();
    open();
    EXPECT_EQ(subjects(), (Lines{"星", "Re: 花見", "花見", "旅行の話"}));
    EXPECT_EQ(column("results", ResultsModel::Date).front(), "2002/01/01 10:11");
    EXPECT_EQ(column("results", ResultsModel::Person),
              (Lines{"← けん", "→ 花子", "← 花子", "← 花子"}));
    EXPECT_EQ(shown(), "星");
    EXPECT_EQ(status(), "4 通のうち 4 通");
}

TEST_F(LettersWindowTest, FindsAsOneTypes)
{
    givenLetters();
    open();
    type("桜");
    EXPECT_EQ(subjects(), (Lines{"Re: 花見", "花見", "旅行の話"}));
    EXPECT_EQ(column("results", ResultsModel::Line),
              (Lines{"桜を見に行きます。", "桜が満開です。", "桜は散っていました。"}));
    type("桜 -京都 年:2001");
    EXPECT_EQ(subjects(), (Lines{"Re: 花見", "花見"}));
    type("どこにもない");
    EXPECT_EQ(subjects(), Lines{});
    EXPECT_EQ(letter().toPlainText().toStdString(), "見つかりません");
    EXPECT_EQ(status(), "4 通のうち 0 通");
}

TEST_F(LettersWindowTest, AHitBeyondTheRoomOfItsCellIsBroughtIntoIt)
{
    store(with(u"a", Text(60, u'長') + u"星" + Text(20, u'い')));
    open();
    type("星");
    auto& list = part<QTableView>("results");
    list.horizontalHeader()->setStretchLastSection(false);
    list.setColumnWidth(ResultsModel::Line, 150);
    list.setColumnWidth(ResultsModel::Subject, 20);
    const QModelIndex line = list.model()->index(0, ResultsModel::Line);
    const QImage cell = list.viewport()->grab(list.visualRect(line)).toImage();
    EXPECT_TRUE(isInkedIn(coloursFor(list.palette()).mark, cell));
}

TEST_F(LettersWindowTest, TheExactSwitchCountsForms)
{
    Mail wide = with(u"ＡＢＣ", u"x");
    store(wide);
    open();
    type("abc");
    EXPECT_EQ(subjects().size(), 1u);
    part<QCheckBox>("exact").setChecked(true);
    settle();
    EXPECT_EQ(subjects().size(), 0u);
}

TEST_F(LettersWindowTest, TheLetterOnDisplayStaysWhileItIsFound)
{
    givenLetters();
    open();
    pick("results", 2);
    ASSERT_EQ(shown(), "花見");
    type("桜");
    EXPECT_EQ(shown(), "花見");
    type("星");
    EXPECT_EQ(shown(), "星");
}

TEST_F(LettersWindowTest, F3GoesThroughTheHitsAndOnToTheNextLetter)
{
    givenLetters();
    open();
    type("桜");
    ASSERT_EQ(shown(), "Re: 花見");
    trigger(QKeySequence(Qt::Key_F3));
    EXPECT_EQ(shown(), "Re: 花見");
    trigger(QKeySequence(Qt::Key_F3));
    EXPECT_EQ(shown(), "花見");
    trigger(QKeySequence(Qt::SHIFT | Qt::Key_F3));
    EXPECT_EQ(shown(), "Re: 花見");
    trigger(QKeySequence(Qt::SHIFT | Qt::Key_F3));
    EXPECT_EQ(shown(), "Re: 花見") << "there is no letter before it";
}

TEST_F(LettersWindowTest, ACorrespondentNarrowsTheList)
{
    givenLetters();
    open();
    EXPECT_EQ(column("people", 0), (Lines{"すべての相手", "花子", "けん"}));
    EXPECT_EQ(column("people", 1), (Lines{"4", "3", "1"}));
    pick("people", 2);
    EXPECT_EQ(subjects(), Lines{"星"});
    EXPECT_EQ(column("people", 1), (Lines{"4", "3", "1"})) << "the others can still be picked";
    ASSERT_EQ(chips().size(), 1u);
    chips()[0]->click();
    settle();
    EXPECT_EQ(subjects().size(), 4u);
    EXPECT_TRUE(chips().empty());
}

TEST_F(LettersWindowTest, SeveralAddressesOfAFriendAreOnePerson)
{
    givenLetters();
    Mail second = mail(u"hanako@work.example.com", u"taro@example.jp", u"会社から", u"20030101");
    second.SndName = u"H. Yamada";
    store(second);
    addFriend(u"hanako@example.jp", u"山田花子", u"モモ");
    addFriend(u"hanako@work.example.com", u"山田花子", u"モモ");
    open();
    EXPECT_EQ(column("people", 0), (Lines{"すべての相手", "山田花子", "けん"}));
    EXPECT_EQ(column("people", 1), (Lines{"5", "4", "1"}));
}

TEST_F(LettersWindowTest, TheStripOfYearsNarrowsTheList)
{
    givenLetters();
    open();
    emit strip().chosen(Months{200101, 200112});
    settle();
    EXPECT_EQ(subjects(), (Lines{"Re: 花見", "花見"}));
    EXPECT_EQ(strip().accessibleDescription().toStdString(),
              "2001年1月から2001年12月まで。受信 1 通、送信 1 通");
    ASSERT_EQ(chips().size(), 1u);
    QTest::keyClick(&strip(), Qt::Key_Escape);
    settle();
    EXPECT_EQ(subjects().size(), 4u);
}

TEST_F(LettersWindowTest, AConversationIsAFilter)
{
    givenLetters();
    open();
    pick("results", 1);
    trigger(QKeySequence(QStringLiteral("Ctrl+T")));
    settle();
    EXPECT_EQ(subjects(), (Lines{"Re: 花見", "花見"}));
    trigger(QKeySequence(QStringLiteral("Ctrl+T")));
    settle();
    EXPECT_EQ(subjects().size(), 4u);
    EXPECT_EQ(shown(), "Re: 花見");
}

// Narrowing by keyboard is done with Shift or Ctrl held.
TEST_F(LettersWindowTest, TheLetterOnDisplayIsTheSelectedOneWhateverIsHeld)
{
    givenLetters();
    open();
    pick("results", 2);
    for (const auto& [key, held] : {std::pair(Qt::Key_Shift, Qt::ShiftModifier),
                                    std::pair(Qt::Key_Control, Qt::ControlModifier)}) {
        QTest::keyPress(window->windowHandle(), key, held);
        ASSERT_EQ(QGuiApplication::keyboardModifiers(), held);
        emit strip().chosen(Months{200101, 200112});
        settle();
        const auto rows = part<QTableView>("results").selectionModel()->selectedRows();
        ASSERT_EQ(rows.size(), 1);
        EXPECT_EQ(rows.front().row(), 1);
        EXPECT_EQ(shown(), "花見");
        QTest::keyRelease(window->windowHandle(), key);
    }
}

TEST_F(LettersWindowTest, BeginsWithTheCorrespondentOfTheMainWindow)
{
    givenLetters();
    open(u"ken@example.org");
    EXPECT_EQ(subjects(), Lines{"星"});
    EXPECT_EQ(chips().size(), 1u);
}

TEST_F(LettersWindowTest, AnUnknownCorrespondentFindsAllAndSaysSo)
{
    givenLetters();
    open(u"nobody@example.org");
    EXPECT_EQ(subjects().size(), 4u);
    EXPECT_TRUE(chips().empty());
    EXPECT_EQ(window->statusBar()->currentMessage().toStdString(),
              "nobody@example.org の手紙はありません");
}

TEST_F(LettersWindowTest, AFolderThatCantBeListedIsAnEmptyWindow)
{
    LettersStart start;
    start.folder = folder / "none";
    window = std::make_unique<LettersWindow>(std::move(start));
    settle();
    EXPECT_EQ(subjects(), Lines{});
}

TEST_F(LettersWindowTest, BackupsAreSearchedTooAndEachLetterIsShownOnce)
{
    const Text backup = archive("Tolvek_20010101.Mdb");
    givenLetters();
    store(with(u"旅行の話", u"京都は雨でした。\r\n桜は散っていました。", u"20000215"), backup);
    store(with(u"古い手紙", u"もっと古い", u"19990215"), backup);
    open();
    EXPECT_EQ(subjects(), (Lines{"星", "Re: 花見", "花見", "旅行の話", "古い手紙"}));
    pick("results", 3);
    EXPECT_NE(letter().toPlainText().indexOf(QStringLiteral("Tolvek.Mdb、Tolvek_20010101.Mdb")),
              -1);
}

TEST_F(LettersWindowTest, WhatIsStoredMeanwhileComesWhenTheWindowIsUsedAgain)
{
    givenLetters();
    open();
    pick("results", 2);
    store(with(u"新しい", u"x", u"20040101"));
    QEvent used(QEvent::WindowActivate);
    QCoreApplication::sendEvent(window.get(), &used);
    while (subjects().size() < 5)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_EQ(subjects().front(), "新しい");
    EXPECT_EQ(shown(), "花見") << "the letter on display stays";
}

TEST_F(LettersWindowTest, AFileThatCantBeReadIsNamedBelow)
{
    givenLetters();
    writeBytes(folder / "Tolvek_20010101.Mdb", std::string(5000, 'x'));
    open();
    EXPECT_EQ(subjects().size(), 4u);
    EXPECT_NE(status().find("Tolvek_20010101.Mdb： 読めません"), std::string::npos);
}

TEST_F(LettersWindowTest, TheKeyboardReachesEverything)
{
    givenLetters();
    open();
    auto& field = part<QLineEdit>("field");
    field.setFocus();
    QTest::keyClick(&field, Qt::Key_Down);
    EXPECT_EQ(shown(), "Re: 花見") << "the arrows of the field move in the list";
    QTest::keyClick(&field, Qt::Key_Up);
    EXPECT_EQ(shown(), "星");
    type("桜");
    QTest::keyClick(&field, Qt::Key_Escape);
    EXPECT_EQ(field.text(), QString());
    settle();
    std::set<QWidget*> reached;
    for (int tab = 0; tab < 20; ++tab) {
        reached.insert(QApplication::focusWidget());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    for (const char* name : {"people", "results"})
        EXPECT_TRUE(reached.contains(&part<QTableView>(name))) << name;
    EXPECT_TRUE(reached.contains(&strip()));
    EXPECT_TRUE(reached.contains(&letter()));
}

// An edit field takes more keys for itself than its user knows of.
TEST_F(LettersWindowTest, NoPartTakesAMenusKeyForItself)
{
    givenLetters();
    open();
    QWidget* const parts[] = {&part<QLineEdit>("field"), &part<QTableView>("people"),
                              &part<QTableView>("results"), &letter(), &strip()};
    for (const QMenu* const menu : window->menuBar()->findChildren<QMenu*>())
        for (const QAction* const action : menu->actions())
            for (const QKeySequence& keys : action->shortcuts())
                for (QWidget* const each : parts)
                    EXPECT_FALSE(isEditingKey(keys) || takesForItself(*each, keys[0]))
                        << keys.toString().toStdString() << " " << each->metaObject()->className();
}

TEST_F(LettersWindowTest, EveryPartHasANameForAScreenReader)
{
    givenLetters();
    open(u"ken@example.org");
    for (QWidget* const widget : window->findChildren<QWidget*>()) {
        if (widget->focusPolicy() == Qt::NoFocus || !widget->isVisibleTo(window.get())) continue;
        if (widget->parentWidget() && widget->parentWidget()->inherits("QLineEdit")) continue;
        QAccessibleInterface* const spoken = QAccessible::queryAccessibleInterface(widget);
        ASSERT_NE(spoken, nullptr);
        EXPECT_FALSE(spoken->text(QAccessible::Name).isEmpty())
            << widget->metaObject()->className() << widget->objectName().toStdString();
    }
    const QModelIndex row = part<QTableView>("results").model()->index(0, 0);
    EXPECT_EQ(row.data(Qt::AccessibleTextRole).toString().toStdString(),
              "受け取った手紙、2002年1月1日（火） 10:11、けん、星");
}

TEST_F(LettersWindowTest, TheTextsSizeIsKeptForTheNextTime)
{
    givenLetters();
    settings = QString::fromStdString((folder / "look.ini").string());
    open();
    const int usual = letter().font().pointSize();
    emit letter().zoomed(1);
    emit letter().zoomed(1);
    EXPECT_EQ(letter().font().pointSize(), usual + 2);
    EXPECT_EQ(part<QTableView>("results").font().pointSize(), usual + 2);
    window->close();
    open();
    EXPECT_EQ(letter().font().pointSize(), usual + 2);
    trigger(QKeySequence(QStringLiteral("Ctrl+0")));
    EXPECT_EQ(letter().font().pointSize(), usual);
}

TEST_F(LettersWindowTest, AnEmptyArchiveIsAnEmptyWindow)
{
    open();
    EXPECT_EQ(subjects(), Lines{});
    EXPECT_EQ(status(), "0 通のうち 0 通");
    trigger(QKeySequence(Qt::Key_F3));
    trigger(QKeySequence(QStringLiteral("Ctrl+T")));
    settle();
}

}
}
