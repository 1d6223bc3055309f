// How much memory a conversion takes: the peak, and the sum of all allocations, which
// reveals work quadratic in the length of a mail. The allocation routines are counted,
// so the result doesn't depend on time; that requires a test program of its own.
#include "converter/conversion.h"

#include "converter/mutation.h"
#include "support/temp_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace {

std::atomic<std::size_t> held = 0;
std::atomic<std::size_t> most = 0;
std::atomic<std::size_t> total = 0;

}

void* operator new(std::size_t size)
{
    void* place = std::malloc(std::max<std::size_t>(size, 1));
    if (place == nullptr) throw std::bad_alloc();
    held += malloc_usable_size(place);
    total += malloc_usable_size(place);
    most = std::max(most.load(), held.load());
    return place;
}

void operator delete(void* place) noexcept
{
    held -= place == nullptr ? 0 : malloc_usable_size(place);
    std::free(place);
}

void operator delete(void* place, std::size_t) noexcept
{
    operator delete(place);
}

namespace tolvek::test {
namespace {

const std::string kHead = "From: a@example.com\nDate: 1 Jan 2000 1:00\n";

struct Room {
    std::size_t most, total;
};

Room roomFor(const std::string& box)
{
    const TempFolder folder;
    writeBytes(folder / "box", box);
    const std::size_t before = held;
    most = before;
    total = 0;
    const Conversion result = convertMailBox(folder / "box", folder / "Tolvek.Tmp");
    EXPECT_EQ(result.status, ConversionStatus::Converted);
    return {most - before, total};
}

struct Form {
    const char* name;
    const char* type;
    const char* piece;
};

class RoomLargeMailTest : public ::testing::TestWithParam<Form> {};

// The mail, its bytes after transfer decoding and its text, plus what a mail of any
// size takes: 64 MB need less than 200.
TEST_P(RoomLargeMailTest, TakesThreeTimesItsSize)
{
    constexpr std::size_t kSize = 4u << 20;
    constexpr std::size_t kAnySize = 5u << 20;
    std::string box = kHead + GetParam().type + "\n\n";
    box += repeated(GetParam().piece, kSize - box.size());
    EXPECT_LT(roomFor(box).most, 3 * kSize + kAnySize);
}

INSTANTIATE_TEST_SUITE_P(
    Forms, RoomLargeMailTest,
    ::testing::Values(
        Form{"Ascii", "Subject: x", "a letter of many lines, all of them the same\n"},
        Form{"ShiftJis", "Content-Type: text/plain; charset=shift_jis",
             "\x92\xB7\x82\xA2\x8E\xE8\x8E\x86\x82\xC5\x82\xB7\x81\x42\n"},
        Form{"Jis0212", "Content-Type: text/plain; charset=iso-2022-jp-2",
             "\x1b$(D0!0\"0#0$0%0!0\"0#0$0%\x1b(B\n"},
        Form{"Base64", "Content-Type: text/plain; charset=utf-8\nContent-Transfer-Encoding: base64",
             "44GT44KT44Gr44Gh44Gv44CC44GK5YWD5rCX44Gn44GZ44GL44CCCg==\n"},
        Form{"QuotedPrintable",
             "Content-Type: text/plain; charset=utf-8\nContent-Transfer-Encoding: "
             "quoted-printable",
             "=E3=81=93=E3=82=93=E3=81=AB=E3=81=A1=E3=81=AF a letter\n"},
        Form{"Html", "Content-Type: text/html",
             "<p>a <b>letter</b> of many paragraphs, all the same</p>\n"},
        Form{"Attachment", "Content-Type: image/png; name=a.png\nContent-Transfer-Encoding: base64",
             "44GT44KT44Gr44Gh44Gv44CC44GK5YWD5rCX44Gn44GZ44GL44CCCg==\n"}),
    [](const auto& row) { return std::string(row.param.name); });

struct Hostile {
    const char* name;
    const char* front;
    const char* piece;
};

class RoomHostileMailTest : public ::testing::TestWithParam<Hostile> {};

// Twice the mail takes twice the memory, not four times; less if a limit applies.
TEST_P(RoomHostileMailTest, TakesRoomInProportionToItsSize)
{
    constexpr std::size_t kSize = 60'000;
    const auto box = [](std::size_t size) {
        return kHead + GetParam().front + repeated(GetParam().piece, size) + "\n\ntext\n";
    };
    roomFor(box(1)); // builds tables that are kept
    EXPECT_LT(roomFor(box(2 * kSize)).total, roomFor(box(kSize)).total * 5 / 2);
}

INSTANTIATE_TEST_SUITE_P(
    Forms, RoomHostileMailTest,
    ::testing::Values(
        Hostile{"Comments", "To: ", "("}, Hostile{"CommentsOfWords", "To: ", "(=?a?B?"},
        Hostile{"CommentsClosed", "To: ", "(a)"}, Hostile{"Angles", "To: ", "<a"},
        Hostile{"Quotes", "To: ", "\"("}, Hostile{"FoldedComments", "To: a", "\n (("},
        Hostile{"Fields", "", "To: ((\n"},
        Hostile{"Stamps", "", "Received: ((((; 1 Jan 2000 1:00\n"},
        Hostile{"Parts", "Content-Type: multipart/mixed; boundary=b\n\n",
                "--b\nContent-Type: text/html\n\nx\n--b\n\nyy\n"},
        Hostile{"PartsOfText", "Content-Type: multipart/mixed; boundary=b\n\n", "--b\n\nx\n"},
        Hostile{"PartsInParts", "", "Content-Type: multipart/mixed; boundary=b\n\n--b\n"},
        Hostile{"FormsInForms", "", "Content-Type: multipart/alternative; boundary=b\n\n--b\n"},
        Hostile{"MailsInMails", "Content-Type: message/rfc822\n\n",
                "Content-Type: message/rfc822\nSubject: a\n\n"},
        Hostile{"Separators", "Content-Type: multipart/mixed; boundary=b\n\n", "--b--\nFrom a\n"},
        Hostile{"SeparatorsAfterALongHead", "X: a\n\nb\n", "--c--\nFrom a\n\n"},
        Hostile{"OpenTags", "Content-Type: text/html\n\n", "<b><p>"},
        Hostile{"OpenTables", "Content-Type: text/html\n\n", "<table><td>"},
        Hostile{"OpenLinks", "Content-Type: text/html\n\n", "<a href=http://a>"},
        Hostile{"Quotations", "Content-Type: text/html\n\n", "<blockquote>a"},
        Hostile{"Lists", "Content-Type: text/html\n\n", "<ol><li>"}),
    [](const auto& row) { return std::string(row.param.name); });

}
}
