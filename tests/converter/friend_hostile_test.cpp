// Broken copies of the address books: whatever the input, Friend.Tmp can be read to
// its end.
#include "converter/friend_reader.h"
#include "converter/mutation.h"
#include "platform/runtime/text.h"
#include "support/test_data.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tolvek::test {
namespace {

struct Book {
    std::string name, bytes;
};

std::vector<Book> corpus()
{
    std::vector<Book> books;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::filesystem::path(TOLVEK_TEST_DATA) / "friends"))
        if (entry.path().extension() != ".md")
            books.push_back({entry.path().filename().string(), readBytes(entry.path())});
    std::sort(books.begin(), books.end(),
              [](const Book& a, const Book& b) { return a.name < b.name; });
    return books;
}

// As many complete records as the count says, each of which the reader can store.
void expectReadable(const Book& book)
{
    const TempFolder folder;
    writeBytes(folder / book.name, book.bytes);
    const Conversion result = convertFriendBook(folder.path(), folder / "Friend.Tmp");
    EXPECT_EQ(result.status, ConversionStatus::Converted);
    const ReadFriends friends = readFriendTmp(folder / "Friend.Tmp");
    ASSERT_EQ(friends.size(), static_cast<std::size_t>(result.count));
    for (const ReadFriend& read : friends) {
        EXPECT_NE(read.address.find('@'), std::string::npos);
        EXPECT_EQ(read.address.find_first_of("' \"\r\n\t"), std::string::npos);
        EXPECT_EQ(read.kind.size(), 1u);
        for (const std::string& text : {read.pet, read.name, read.address}) {
            EXPECT_LE(fromUtf8(text).size(), 64u);
            EXPECT_EQ(text.find_first_of(std::string("\0\x1A\r\n\t'\"", 7)), std::string::npos);
        }
    }
}

TEST(FriendHostileTest, TruncatedAnywhere)
{
    for (const auto& [name, bytes] : corpus())
        for (std::size_t size = 0; size < bytes.size(); size += 7)
            expectReadable({name, bytes.substr(0, size)});
}

TEST(FriendHostileTest, MutatedAtRandomPlaces)
{
    std::mt19937 random(20000215);
    for (int round = 0; round < 20; ++round)
        for (const auto& [name, bytes] : corpus())
            expectReadable({name, mutated(bytes, random)});
}

// None of these may take quadratic time.
TEST(FriendHostileTest, EndlessRunsTakeNoLongerThanTheirLength)
{
    for (const char* piece : {"x",
                              "\n",
                              "\0",
                              "\"",
                              "\"\n",
                              "\",\"\n",
                              ",",
                              "a\"b\n",
                              " \n",
                              ";",
                              ":",
                              "=\n",
                              "\\",
                              "BEGIN:VCARD\n",
                              "BEGIN:VCARD\nAGENT:\n",
                              "END:VCARD\n",
                              "FN:=\n",
                              "\xFF\xFE",
                              "EMAIL:a\n",
                              "EMAIL;QUOTED-PRINTABLE:=\n",
                              "BEGIN:VCARD\nEMAIL:a@b\nEND:VCARD\n"}) {
        const std::string run = repeated(piece[0] == 0 ? std::string(1, '\0') : piece, 100'000);
        expectReadable({"a.csv", run});
        expectReadable({"a.vcf", run});
        expectReadable({"a.vcf", "BEGIN:VCARD\nFN:" + run + "\nEND:VCARD\n"});
        expectReadable({"a.vcf", "BEGIN:VCARD\nFN;X=\"" + run + "\nEND:VCARD\n"});
    }
}

}
}
