#include "platform/dao/jet_stream.h"

#include "platform/dao/jet_reader/wide_text.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

using jet::Item;

std::string item(Item kind, const std::string& bytes = {})
{
    std::string made(1, static_cast<char>(kind));
    for (int i = 0; i < 4; ++i)
        made += static_cast<char>(bytes.size() >> (8 * i));
    return made + bytes;
}

std::string column(jet::ColumnType type, char size, const std::string& name)
{
    return item(Item::Column,
                std::string(1, static_cast<char>(type)) + size + std::string(3, '\0') + name);
}

const std::string hello = item(Item::Hello, std::string(jet::kHello));
const std::string end = item(Item::End);
const std::string table = item(Item::Table, "t") + column(jet::ColumnType::Text, 9, "c");

struct Noted : JetReceiver {
    void table(const Text& name, const std::vector<JetColumn>& columns) override
    {
        text += toUtf8(name) + "(";
        for (const JetColumn& column : columns)
            text += toUtf8(column.name) + " " + std::to_string(column.type) + " " +
                    std::to_string(column.size) + ";";
        text += ")";
    }
    void row(const std::vector<JetValue>& values) override
    {
        for (const JetValue& value : values) {
            if (const auto* kept = std::get_if<Text>(&value)) text += " '" + toUtf8(*kept) + "'";
            if (const auto* number = std::get_if<std::int64_t>(&value))
                text += " " + std::to_string(*number);
            if (value.index() == 0) text += " Null";
        }
        text += ".";
    }
    void end() override { text += "end"; }
    std::string text;
};

// What the receiver gets; "bad" for bytes that aren't a stream.
std::string received(const std::string& bytes, std::size_t piece = 1000)
{
    Noted noted;
    JetStream stream(noted, 0);
    try {
        for (std::size_t at = 0; at < bytes.size(); at += piece)
            stream.take(std::string_view(bytes).substr(at, piece));
    } catch (const BadJet&) {
        return "bad";
    }
    return noted.text;
}

std::string valueOf(Item kind, const std::string& bytes)
{
    const std::string all = received(hello + table + item(kind, bytes) + end);
    return all == "bad" ? all : all.substr(10, all.size() - 14);
}

TEST(JetStreamTest, TablesAndRowsComeInTheirOrderHoweverTheyAreCut)
{
    const std::string stream = hello + table + column(jet::ColumnType::YesNo, 0, "n") +
                               item(Item::Wide, std::string("x\0", 2)) + item(Item::True) +
                               item(Item::Null) + item(Item::False) + table + end;
    for (const std::size_t piece : {1U, 2U, 7U, 1000U})
        EXPECT_EQ(received(stream, piece), "t(c 10 9;n 1 1;) 'x' -1. Null 0.t(c 10 9;)end");
}

// The texts of a Jet 3 file are in code page 932, whatever its header says. The test
// has characters that other tables of that code page lose: ① ㈱ 髙 ～ \ ~ and ｱ.
TEST(JetStreamTest, TextsOfTheOlderFormatAreCodePage932)
{
    EXPECT_EQ(valueOf(Item::Ansi, "\x87\x40\x87\x8A\xFB\xFC\x81\x60\\~\xB1"), " '①㈱髙～\\~ｱ'");
    EXPECT_EQ(valueOf(Item::Ansi, "\x93\xFA\x96\x7B"), " '日本'");
}

TEST(JetStreamTest, ValuesAreToldAsTheyStand)
{
    EXPECT_EQ(valueOf(Item::Wide, std::string("\x42\x30\0\0", 4)),
              " 'あ" + std::string(1, '\0') + "'");
    EXPECT_EQ(valueOf(Item::Number, std::string(8, '\xFF')), " -1");
    EXPECT_EQ(valueOf(Item::Bytes, std::string("\x01\xAF", 2)), " '01AF'");
    EXPECT_EQ(valueOf(Item::Null, ""), " Null");
}

TEST(JetStreamTest, WhatIsNoStreamIsRefused)
{
    for (const std::string& bytes :
         {item(Item::End), item(Item::Hello, "TolvekJet 0"), hello + item(Item::Null),
          hello + item(Item::Table, "t") + end, hello + table + table.substr(6, 3) + end + end,
          hello + table + column(jet::ColumnType::Text, 9, "d") + item(Item::Null) + end,
          hello + table + item(Item::Null) + column(jet::ColumnType::Text, 9, "d"),
          hello + item(Item::Table, "t") + column(static_cast<jet::ColumnType>(99), 1, "c"),
          hello + table + item(Item::Wide, "x"), hello + table + item(Item::Number, "x"),
          hello + table + item(static_cast<Item>('x')), hello + end + end})
        EXPECT_EQ(received(bytes), "bad");
}

TEST(JetStreamTest, MoreThanTheFileCanHoldIsRefused)
{
    const std::string large = item(Item::Wide, std::string(30000, 'x'));
    EXPECT_NE(received(hello + table + large + large), "bad");
    EXPECT_EQ(received(hello + table + large + large + large), "bad");
    EXPECT_EQ(received(hello + table + "W\xFF\xFF\xFF\xFF"), "bad");
    std::string many = hello + table;
    for (int i = 0; i < 70000; ++i)
        many += item(Item::Null);
    EXPECT_EQ(received(many), "bad");
}

TEST(JetStreamTest, ItIsWholeWithItsEndAlone)
{
    Noted noted;
    JetStream stream(noted, 0);
    EXPECT_FALSE(stream.hasBegun());
    stream.take(hello);
    EXPECT_TRUE(stream.hasBegun());
    EXPECT_FALSE(stream.isWhole());
    stream.take(end + "E");
    EXPECT_FALSE(stream.isWhole());
}

struct Packed {
    std::string stored, text;
};

TEST(JetStreamTest, PackedTextsAreUnpacked)
{
    const Packed table_[] = {
        {std::string("a\0b\0", 4), std::string("a\0b\0", 4)},
        {"\xFF\xFE"
         "ab",
         std::string("a\0b\0", 4)},
        {std::string("\xFF\xFE"
                     "a\0\x42\x30\0b",
                     8),
         std::string("a\0\x42\x30"
                     "b\0",
                     6)},
        {std::string("\xFF\xFE\0\x3D\xD8\x00", 6), std::string("\x3D\xD8", 2)},
        {"", ""},
        {"\xFF\xFE", ""},
    };
    for (const auto& [stored, text] : table_)
        EXPECT_EQ(jet::wideText(stored), text);
    EXPECT_ANY_THROW(jet::wideText("abc"));
    EXPECT_ANY_THROW(jet::wideText(std::string("\xFF\xFE\0a", 4)));
}

}
}
