#include "platform/runtime/key_notation.h"

#include "platform/runtime/runtime_error.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

std::string spelledKey(const KeyEvent& event)
{
    static const char* const names[] = {
        "",       "Enter",   "Tab",      "Escape", "Backspace",   "Break",      "CapsLock", "Clear",
        "Delete", "Down",    "Up",       "Left",   "Right",       "End",        "Home",     "Help",
        "Insert", "NumLock", "PageDown", "PageUp", "PrintScreen", "ScrollLock",
    };
    if (event.key == Key::Shift) return "Shift";
    if (event.key == Key::Control) return "Control";
    if (event.key == Key::Alt) return "Alt";
    if (event.key >= Key::F1 && event.key <= Key::F16)
        return "F" + std::to_string(static_cast<int>(event.key) - static_cast<int>(Key::F1) + 1);
    return names[static_cast<int>(event.key)];
}

std::string spelledCharacter(char32_t character)
{
    if (character < 0x10000) return toUtf8(Text(1, static_cast<char16_t>(character)));
    const char32_t rest = character - 0x10000;
    return toUtf8(Text{static_cast<char16_t>(0xD800 + (rest >> 10)),
                       static_cast<char16_t>(0xDC00 + (rest & 0x3FF))});
}

// A press is written "+Shift", a release "-Shift", a named key in <>, a character
// as itself, separated by one blank.
std::string spelled(const std::vector<KeyEvent>& events)
{
    std::string all;
    for (const KeyEvent& event : events) {
        if (!all.empty()) all += ' ';
        if (event.action == KeyAction::Press)
            all += '+' + spelledKey(event);
        else if (event.action == KeyAction::Release)
            all += '-' + spelledKey(event);
        else if (event.key == Key::Character)
            all += spelledCharacter(event.character);
        else
            all += '<' + spelledKey(event) + '>';
    }
    return all;
}

struct Row {
    TextView notation;
    const char* events;
};

void expectRows(const std::vector<Row>& rows)
{
    for (const Row& row : rows)
        EXPECT_EQ(spelled(keyEvents(row.notation)), row.events) << toUtf8(row.notation);
}

TEST(KeyNotationTest, OrdinaryCharactersAreThemselves)
{
    expectRows({
        {u"", ""},
        {u"Ab1", "A b 1"},
        {u"a@example.jp", "a @ e x a m p l e . j p"},
        {u"[]", "[ ]"},
        {u"件名", "件 名"},
        {u"＋｛｝（）", "＋ ｛ ｝ （ ）"},
        {u"a b", "a   b"},
        {u"\\\"'/", "\\ \" ' /"},
    });
}

TEST(KeyNotationTest, ASurrogatePairIsOneCharacter)
{
    const std::vector<KeyEvent> expected = {{KeyAction::Stroke, Key::Character, 0x20BB7},
                                            {KeyAction::Stroke, Key::Character, U'野'}};
    EXPECT_EQ(keyEvents(u"𠮷野"), expected);
    expectRows({
        {u"+𠮷野", "+Shift 𠮷 -Shift 野"},
        {u"{𠮷}", "𠮷"},
        {u"{𠮷 2}", "𠮷 𠮷"},
    });
}

TEST(KeyNotationTest, HalfAPairStaysWhatItIs)
{
    const char16_t text[] = {0xD842, u'a', 0};
    const std::vector<KeyEvent> expected = {{KeyAction::Stroke, Key::Character, 0xD842},
                                            {KeyAction::Stroke, Key::Character, U'a'}};
    EXPECT_EQ(keyEvents(text), expected);
}

TEST(KeyNotationTest, NamesStandForKeys)
{
    expectRows({
        {u"~", "<Enter>"},
        {u"{ENTER}", "<Enter>"},
        {u"{TAB}", "<Tab>"},
        {u"{ESC}", "<Escape>"},
        {u"{BACKSPACE}{BS}{BKSP}", "<Backspace> <Backspace> <Backspace>"},
        {u"{BREAK}", "<Break>"},
        {u"{CAPSLOCK}", "<CapsLock>"},
        {u"{CLEAR}", "<Clear>"},
        {u"{DELETE}{DEL}", "<Delete> <Delete>"},
        {u"{DOWN}{UP}{LEFT}{RIGHT}", "<Down> <Up> <Left> <Right>"},
        {u"{END}{HOME}", "<End> <Home>"},
        {u"{HELP}", "<Help>"},
        {u"{INSERT}{INS}", "<Insert> <Insert>"},
        {u"{NUMLOCK}", "<NumLock>"},
        {u"{PGDN}{PGUP}", "<PageDown> <PageUp>"},
        {u"{PRTSC}", "<PrintScreen>"},
        {u"{SCROLLLOCK}", "<ScrollLock>"},
    });
}

TEST(KeyNotationTest, ThereAreSixteenFunctionKeys)
{
    for (int number = 1; number <= 16; ++number)
        EXPECT_EQ(spelled(keyEvents(u"{F" + decimal(number) + u"}")),
                  "<F" + std::to_string(number) + ">");
}

TEST(KeyNotationTest, TheCaseOfNamesDoesntCount)
{
    expectRows({
        {u"{tab}{Tab}{tAB}", "<Tab> <Tab> <Tab>"},
        {u"{f12}", "<F12>"},
        {u"{ScrollLock}", "<ScrollLock>"},
        {u"{pgup 2}", "<PageUp> <PageUp>"},
    });
}

TEST(KeyNotationTest, BracesMakeACharacterItself)
{
    expectRows({
        {u"{+}", "+"},
        {u"{^}", "^"},
        {u"{%}", "%"},
        {u"{~}", "~"},
        {u"{(}{)}", "( )"},
        {u"{[}{]}", "[ ]"},
        {u"{{}", "{"},
        {u"{}}", "}"},
        {u"{{}{}}", "{ }"},
        {u"{a}{F}{1}", "a F 1"},
        {u"{ }", " "},
        {u"{件}", "件"},
    });
}

TEST(KeyNotationTest, ACountRepeats)
{
    expectRows({
        {u"{TAB 3}", "<Tab> <Tab> <Tab>"},
        {u"{TAB 1}", "<Tab>"},
        {u"{TAB 02}", "<Tab> <Tab>"},
        {u"{TAB   2}", "<Tab> <Tab>"},
        {u"{h 4}", "h h h h"},
        {u"{+ 2}", "+ +"},
        {u"{{ 2}", "{ {"},
        {u"{} 2}", "} }"},
        {u"{  2}", "   "},
        {u"{5 2}", "5 5"},
        {u"{件 2}", "件 件"},
    });
    EXPECT_EQ(keyEvents(u"{x 32767}").size(), 32767u);
}

TEST(KeyNotationTest, AModifierIsHeldForTheNextKeyAlone)
{
    expectRows({
        {u"+a", "+Shift a -Shift"},
        {u"^a", "+Control a -Control"},
        {u"%F", "+Alt F -Alt"},
        {u"+ec", "+Shift e -Shift c"},
        {u"a+b", "a +Shift b -Shift"},
        {u"+a+b", "+Shift a -Shift +Shift b -Shift"},
        {u"^+a", "+Control +Shift a -Shift -Control"},
        {u"+^%a", "+Shift +Control +Alt a -Alt -Control -Shift"},
        {u"++a", "+Shift a -Shift"},
        {u"+~", "+Shift <Enter> -Shift"},
        {u"+{TAB}", "+Shift <Tab> -Shift"},
        {u"+{TAB 2}x", "+Shift <Tab> <Tab> -Shift x"},
        {u"+{+}", "+Shift + -Shift"},
        {u"%{F4}", "+Alt <F4> -Alt"},
        {u"+[", "+Shift [ -Shift"},
    });
}

TEST(KeyNotationTest, AModifierWithoutAKeyIsPressedAlone)
{
    expectRows({
        {u"%", "+Alt -Alt"},
        {u"a+", "a +Shift -Shift"},
        {u"+^", "+Shift +Control -Control -Shift"},
        {u"(a+)b", "a +Shift -Shift b"},
        {u"+()", "+Shift -Shift"},
    });
}

TEST(KeyNotationTest, AGroupComesUnderItsModifiers)
{
    expectRows({
        {u"+(EC)", "+Shift E C -Shift"},
        {u"+(EC)d", "+Shift E C -Shift d"},
        {u"(EC)", "E C"},
        {u"()", ""},
        {u"^%(a{TAB}~)", "+Control +Alt a <Tab> <Enter> -Alt -Control"},
        {u"+(a{(}{)}b)", "+Shift a ( ) b -Shift"},
    });
}

TEST(KeyNotationTest, GroupsStandInGroups)
{
    expectRows({
        {u"+(a^(bc)d)", "+Shift a +Control b c -Control d -Shift"},
        {u"+(a^b)c", "+Shift a +Control b -Control -Shift c"},
        {u"((a))", "a"},
        {u"%(+(x)y)", "+Alt +Shift x -Shift y -Alt"},
    });
}

// A second press would cause a release before the end of the group.
TEST(KeyNotationTest, AModifierThatIsHeldAlreadyStaysHeld)
{
    expectRows({
        {u"+(+ab)c", "+Shift a b -Shift c"},
        {u"+(+(a)b)", "+Shift a b -Shift"},
        {u"+(a+)", "+Shift a -Shift"},
        {u"+(^+ab)", "+Shift +Control a -Control b -Shift"},
    });
}

TEST(KeyNotationTest, WhatCantBeReadIsErrorFive)
{
    const TextView texts[] = {
        u"{",         u"a{",          u"{TAB",
        u"{TAB 3",    u"{}",          u"{}a",
        u"{}{TAB}",   u"{{",          u"}",
        u"a}b",       u"{}}}",        u"(",
        u"+(a",       u"((a)",        u")",
        u"(a))",      u"+)",          u"{NAME}",
        u"{TABS}",    u"{F0}",        u"{F17}",
        u"{F01}",     u"{ TAB}",      u"{TAB }",
        u"{TAB x}",   u"{TAB 0}",     u"{TAB -1}",
        u"{TAB +1}",  u"{TAB 1.5}",   u"{TAB 3 }",
        u"{TAB 3 3}", u"{TAB 32768}", u"{TAB 99999999999999999999}",
        u"{a }",      u"{ab}",        u"{a３}",
        u"{a ３}",    u"{ＴＡＢ}",    u"{TAB\u30003}",
        u"{a　3}",    u"{RETURN}",
    };
    for (const TextView text : texts) {
        try {
            keyEvents(text);
            ADD_FAILURE() << "was taken: " << toUtf8(text);
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.number(), 5) << toUtf8(text);
        }
    }
}

TEST(KeyNotationTest, NoTextIsTooDeep)
{
    constexpr std::size_t kDepth = 200000;
    const Text deep = Text(kDepth, u'(') + u"a" + Text(kDepth, u')');
    EXPECT_EQ(spelled(keyEvents(deep)), "a");
}

// An address is sent unescaped: characters with a meaning in the notation take
// effect.
TEST(KeyNotationTest, AnAddressIsReadAsNotation)
{
    expectRows({
        {u"t+x@a.jp{TAB}", "t +Shift x -Shift @ a . j p <Tab>"},
        {u"Re: a{{}b]{TAB}{TAB}", "R e :   a { b ] <Tab> <Tab>"},
    });
}

}
}
