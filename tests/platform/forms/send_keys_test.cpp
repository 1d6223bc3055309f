#include "platform/forms/send_keys.h"
#include "platform/forms/test_hooks.h"

#include "platform/runtime/runtime_error.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace tolvek::test {

class SendKeysTest : public testing::Test {
protected:
    SendKeysTest() { unsetenv("DISPLAY"); }
    ~SendKeysTest() override { hooks::setKeySender({}); }

    static int errorOf(const std::function<void()>& work)
    {
        try {
            work();
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.description(), errorText(error.number()));
            return error.number();
        }
        return 0;
    }
};

TEST_F(SendKeysTest, WithoutAScreenBothAreError5)
{
    EXPECT_EQ(errorOf([] { AppActivate(1); }), 5);
    EXPECT_EQ(errorOf([] { SendKeys(u"abc"); }), 5);
    EXPECT_EQ(errorOf([] { SendKeys(u"日本"); }), 5);
}

TEST_F(SendKeysTest, NoConnectionToTheScreenIsError5)
{
    setenv("DISPLAY", ":9999", 1);
    EXPECT_EQ(errorOf([] { AppActivate(1); }), 5);
    EXPECT_EQ(errorOf([] { SendKeys(u"abc"); }), 5);
    unsetenv("DISPLAY");
}

TEST_F(SendKeysTest, ABadNotationIsError5)
{
    EXPECT_EQ(errorOf([] { SendKeys(u"{"); }), 5);
    EXPECT_EQ(errorOf([] { SendKeys(u""); }), 0) << "no key needs no screen";
}

TEST_F(SendKeysTest, ATestsSenderTakesTheScreensPlace)
{
    Text sent;
    std::int32_t activated = 0;
    hooks::setKeySender(
        {[&](std::int32_t id) { activated = id; }, [&](TextView keys) { sent += keys; }});
    AppActivate(42);
    SendKeys(u"%F");
    SendKeys(u"{");
    EXPECT_EQ(activated, 42);
    EXPECT_EQ(sent, u"%F{");
}

TEST_F(SendKeysTest, TheClipboardKeepsATextAsItIs)
{
    Clipboard::SetText(u"a\r\nb\rc\nd 日本");
    EXPECT_EQ(Clipboard::GetText(), u"a\r\nb\rc\nd 日本");
    Clipboard::Clear();
    EXPECT_EQ(Clipboard::GetText(), u"");
}

}
