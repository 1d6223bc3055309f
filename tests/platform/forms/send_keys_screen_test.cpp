// Sends keys to another program on a screen with a window manager. The test starts
// the screen (screen_main.cpp), the manager and the program.
#include "platform/forms/send_keys.h"

#include "platform/forms/qt_text.h"
#include "platform/runtime/runtime_error.h"
#include "support/errors.h"
#include "support/temp_folder.h"

#include <QApplication>
#include <QClipboard>
#include <QElapsedTimer>
#include <QImage>
#include <QMimeData>
#include <QProcess>

#include <gtest/gtest.h>

#include <memory>

namespace tolvek::test {

namespace {

constexpr int kPatience = 20000;

template <class Condition> bool waitFor(Condition condition, int patience = kPatience)
{
    QElapsedTimer waited;
    for (waited.start(); !condition(); QCoreApplication::processEvents(QEventLoop::AllEvents, 5))
        if (waited.hasExpired(patience)) return false;
    return true;
}

void run(const char* program, const QStringList& arguments)
{
    ASSERT_EQ(QProcess::execute(QString::fromLatin1(program), arguments), 0) << program;
}

void layout(const char* name)
{
    run("setxkbmap", {QString::fromLatin1(name)});
}

// Another program with windows; ends with this object.
class OtherProgram : public QProcess {
public:
    OtherProgram(const char* program, const QStringList& arguments = {})
    {
        setProcessChannelMode(ForwardedErrorChannel);
        start(QString::fromLocal8Bit(program), arguments);
        EXPECT_TRUE(waitForStarted(kPatience)) << program;
    }
    ~OtherProgram() override
    {
        kill();
        waitForFinished(kPatience);
    }
    std::int32_t id() const { return static_cast<std::int32_t>(processId()); }
};

}

class SendKeysScreenTest : public testing::Test {
protected:
    ~SendKeysScreenTest() override { layout("us"); }

    // The manager must be ready before any window is shown: it doesn't always
    // manage windows that exist when it starts.
    void givenManager()
    {
        manager = std::make_unique<OtherProgram>(
            "openbox", QStringList{QStringLiteral("--sm-disable"), QStringLiteral("--startup"),
                                   QStringLiteral("touch ") + path("ready")});
        ASSERT_TRUE(waitFor([this] { return std::filesystem::exists(folder / "ready"); }));
    }
    // Starts the program; its window is shown and active.
    void givenReceiver(const QStringList& more = {})
    {
        receiver = std::make_unique<OtherProgram>(KEY_RECEIVER, QStringList{path(file)} + more);
        ASSERT_TRUE(waitFor([this] { return activates(*receiver); })) << "no window came";
    }
    QString path(const std::string& name) const
    {
        return QString::fromStdString((folder / name).string());
    }
    static bool activates(const OtherProgram& program)
    {
        try {
            AppActivate(program.id());
            return true;
        } catch (const RuntimeError&) {
            return false;
        }
    }
    std::string content() const { return readBytes(folder / file); }
    void expectContent(const std::string& wanted) const
    {
        EXPECT_TRUE(waitFor([&] { return content() == wanted; }, 2000))
            << "has:    " << content() << "\nwanted: " << wanted;
    }

    TempFolder folder;
    const std::string file = "content";
    std::unique_ptr<OtherProgram> manager;
    std::unique_ptr<OtherProgram> receiver;
};

// All of ASCII, in the key notation.
constexpr TextView kAscii = u" !\"#$&'*,-./0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]_`"
                            u"abcdefghijklmnopqrstuvwxyz|{+}{^}{%}{~}{(}{)}{{}{}}";
const std::string kAsciiText = " !\"#$&'*,-./0123456789:;<=>?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]_`"
                               "abcdefghijklmnopqrstuvwxyz|+^%~(){}";

TEST_F(SendKeysScreenTest, AllOfAsciiArrives)
{
    givenManager();
    givenReceiver();
    SendKeys(kAscii);
    expectContent(kAsciiText + "|||");
}

TEST_F(SendKeysScreenTest, TheLayoutOfTheKeyboardDoesntMatter)
{
    givenManager();
    givenReceiver();
    for (const char* name : {"jp", "de", "fr"}) {
        layout(name);
        SendKeys(u"^a");
        SendKeys(kAscii);
        expectContent(kAsciiText + "|||");
        SCOPED_TRACE(name);
    }
}

TEST_F(SendKeysScreenTest, ALetterStandsForItselfUnderCapsLock)
{
    givenManager();
    givenReceiver();
    run("xdotool", {QStringLiteral("key"), QStringLiteral("Caps_Lock")});
    SendKeys(u"aBc+d1!{TAB}");
    expectContent("aBcD1!|||");
    run("xdotool", {QStringLiteral("type"), QStringLiteral("x")});
    const std::string typed = content();
    run("xdotool", {QStringLiteral("key"), QStringLiteral("Caps_Lock")});
    EXPECT_TRUE(waitFor([this] { return content() != "aBcD1!|||"; }));
    EXPECT_EQ(content(), "aBcD1!|X||") << "it is on again";
}

TEST_F(SendKeysScreenTest, KeysThatTheUserHoldsDontMingle)
{
    givenManager();
    givenReceiver();
    run("xdotool", {QStringLiteral("keydown"), QStringLiteral("ctrl"), QStringLiteral("keydown"),
                    QStringLiteral("shift")});
    SendKeys(u"abc");
    expectContent("abc|||");
    run("xdotool", {QStringLiteral("keyup"), QStringLiteral("ctrl"), QStringLiteral("keyup"),
                    QStringLiteral("shift")});
}

TEST_F(SendKeysScreenTest, JapaneseArrivesBetweenKeysAndTheClipboardStays)
{
    givenManager();
    givenReceiver();
    Clipboard::SetText(u"kept\r\nas it was");
    SendKeys(u"Re: 今日は、ｱｲｳ😀{+}x{TAB}件名{TAB}");
    expectContent("Re: 今日は、ｱｲｳ😀+x|件名||");
    EXPECT_EQ(Clipboard::GetText(), u"kept\r\nas it was");
}

TEST_F(SendKeysScreenTest, LineEndsArriveInAText)
{
    givenManager();
    givenReceiver();
    SendKeys(u"{TAB}{TAB}one\r\ntwo");
    expectContent("||one\ntwo|");
}

TEST_F(SendKeysScreenTest, EverythingOnTheClipboardIsPutBack)
{
    givenManager();
    givenReceiver();
    auto* contents = new QMimeData; // owned by the clipboard from now on
    contents->setHtml(QStringLiteral("<b>bold</b>"));
    contents->setData(QStringLiteral("application/x-own"), "own");
    QImage image(3, 2, QImage::Format_RGB32);
    image.fill(Qt::red);
    contents->setImageData(image);
    QApplication::clipboard()->setMimeData(contents);
    SendKeys(u"日本");
    expectContent("日本|||");
    const QMimeData* now = QApplication::clipboard()->mimeData();
    EXPECT_EQ(now->html(), QStringLiteral("<b>bold</b>"));
    EXPECT_EQ(now->data(QStringLiteral("application/x-own")), QByteArray("own"));
    EXPECT_EQ(QApplication::clipboard()->image().size(), QSize(3, 2));
}

TEST_F(SendKeysScreenTest, AnEmptyClipboardIsEmptyAgain)
{
    givenManager();
    givenReceiver();
    Clipboard::Clear();
    SendKeys(u"日本");
    expectContent("日本|||");
    EXPECT_TRUE(QApplication::clipboard()->mimeData()->formats().isEmpty());
}

TEST_F(SendKeysScreenTest, ALongTextArrivesTenTimesWithoutLoss)
{
    givenManager();
    givenReceiver();
    const Text piece = u"Abc-19 @x{+}y/";
    std::string text;
    Text keys;
    for (int i = 0; i < 25; ++i) {
        keys += piece;
        text += "Abc-19 @x+y/";
    }
    for (int time = 0; time < 10; ++time) {
        SendKeys(u"^a" + keys);
        EXPECT_EQ(content(), text + "|||") << time;
        SendKeys(u"^a件名" + keys);
        EXPECT_EQ(content(), "件名" + text + "|||") << time;
    }
}

TEST_F(SendKeysScreenTest, MenusOpenAndTheUsersClipboardIsPasted)
{
    givenManager();
    givenReceiver();
    Clipboard::SetText(u"one\r\ntwo");
    for (int time = 0; time < 5; ++time) {
        SendKeys(u"%F");
        SendKeys(u"N");
        SendKeys(u"a@x.jp{TAB}");
        SendKeys(u"Re: 旅行{TAB}{TAB}");
        SendKeys(u"%E");
        SendKeys(u"J");
        EXPECT_EQ(content(), "a@x.jp|Re: 旅行|one\ntwo|") << time;
    }
}

TEST_F(SendKeysScreenTest, ASlowProgramIsAwaited)
{
    givenManager();
    givenReceiver({QStringLiteral("--slow")});
    SendKeys(u"old");
    SendKeys(u"%F");
    SendKeys(u"N");
    EXPECT_EQ(content(), "|||");
}

TEST_F(SendKeysScreenTest, AModalDialogOfTheProgramGetsTheKeys)
{
    givenManager();
    givenReceiver({QStringLiteral("--dialog")});
    ASSERT_TRUE(activates(*receiver));
    SendKeys(u"x日本y");
    expectContent("|||x日本y|");
}

TEST_F(SendKeysScreenTest, TheRightWindowComesToTheFront)
{
    givenManager();
    givenReceiver();
    const OtherProgram other(KEY_RECEIVER, {path("other")});
    ASSERT_TRUE(waitFor([&] { return activates(other); }));
    SendKeys(u"to the other");
    ASSERT_TRUE(activates(*receiver));
    SendKeys(u"to the first");
    expectContent("to the first|||");
    EXPECT_EQ(readBytes(folder / "other"), "to the other|||");
}

TEST_F(SendKeysScreenTest, KeysStopWhenAnotherWindowTakesTheKeyboard)
{
    givenManager();
    givenReceiver();
    const OtherProgram thief(
        KEY_RECEIVER, {path("thief"), QStringLiteral("--thief"), path(file), QStringLiteral("50")});
    ASSERT_TRUE(waitFor([this] { return std::filesystem::exists(folder / "thief"); }));
    EXPECT_EQ(errorOf([] { SendKeys(Text(2000, u'a')); }), 5);
    EXPECT_EQ(readBytes(folder / "thief"), "|||");
    EXPECT_LT(content().size(), 2000U);
    EXPECT_GT(content().size(), 50U);
    EXPECT_EQ(errorOf([] { SendKeys(u"日本"); }), 5) << "as long as the other one has it";
    EXPECT_EQ(readBytes(folder / "thief"), "|||");
}

TEST_F(SendKeysScreenTest, AFailedPasteStillPutsTheClipboardBack)
{
    givenManager();
    givenReceiver();
    Clipboard::SetText(u"kept");
    receiver.reset();
    EXPECT_EQ(errorOf([] { SendKeys(u"日本"); }), 5);
    EXPECT_EQ(Clipboard::GetText(), u"kept");
}

TEST_F(SendKeysScreenTest, APasteThatNobodyTakesIsAFailure)
{
    givenManager();
    givenReceiver();
    SendKeys(u"%F"); // an open menu accepts no text
    EXPECT_EQ(errorOf([] { SendKeys(u"日本"); }), 5);
}

TEST_F(SendKeysScreenTest, WithoutAWindowManagerNothingIsTyped)
{
    const OtherProgram alone(KEY_RECEIVER, {path(file)});
    ASSERT_TRUE(waitFor([this] { return std::filesystem::exists(folder / file); }));
    EXPECT_EQ(errorOf([&] { AppActivate(alone.id()); }), 5);
    EXPECT_EQ(errorOf([] { SendKeys(u"abc"); }), 5);
    EXPECT_EQ(content(), "|||");
}

TEST_F(SendKeysScreenTest, AProcessWithoutAWindowIsAFailure)
{
    givenManager();
    givenReceiver();
    EXPECT_EQ(errorOf([this] { AppActivate(manager->id()); }), 5);
    EXPECT_EQ(errorOf([] { AppActivate(0); }), 5);
    EXPECT_EQ(errorOf([] { AppActivate(-1); }), 5);
    EXPECT_EQ(errorOf([] { SendKeys(u"abc"); }), 5) << "nothing is active any more";
    EXPECT_EQ(content(), "|||");
}

TEST_F(SendKeysScreenTest, TheWindowOfAProgramThatWasStartedByAnotherCounts)
{
    givenManager();
    const OtherProgram starter(
        "sh",
        {QStringLiteral("-c"), QStringLiteral("'" KEY_RECEIVER "' \"$0\" & wait"), path(file)});
    ASSERT_TRUE(waitFor([&] { return activates(starter); }));
    SendKeys(u"abc");
    expectContent("abc|||");
    AppActivate(starter.id());
    SendKeys(u"%{F4}");
}

TEST_F(SendKeysScreenTest, AKeyThatTheKeyboardLacksIsAFailureBeforeTheFirstStroke)
{
    givenManager();
    givenReceiver();
    EXPECT_EQ(errorOf([] { SendKeys(u"{TAB}^é"); }), 5);
    SendKeys(u"a");
    expectContent("a|||");
}

}
