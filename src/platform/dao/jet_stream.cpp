#include "platform/dao/jet_stream.h"

#include "platform/runtime/codepage932.h"

#include <algorithm>

namespace tolvek {

namespace {

using jet::Item;

constexpr std::size_t kItemHead = 5;
constexpr int kLargestText = 255;
// A compressed character of one byte becomes two bytes and a number of two bytes eight.
// Eight Yes/No fields share one byte of the file.
// The slack is for the names of tables and columns in a small file.
constexpr std::uintmax_t kBytesPerByte = 8, kItemsPerByte = 8, kSlack = 1 << 16;

void require(bool sound)
{
    if (!sound) throw BadJet();
}

std::uint64_t littleEndian(std::string_view bytes)
{
    std::uint64_t value = 0;
    for (std::size_t i = bytes.size(); i > 0; --i)
        value = value << 8 | static_cast<unsigned char>(bytes[i - 1]);
    return value;
}

Text wideText(std::string_view bytes)
{
    require(bytes.size() % 2 == 0);
    Text text;
    text.reserve(bytes.size() / 2);
    for (std::size_t i = 0; i < bytes.size(); i += 2)
        text += static_cast<char16_t>(littleEndian(bytes.substr(i, 2)));
    return text;
}

Text hexadecimal(std::string_view bytes)
{
    constexpr TextView digits = u"0123456789ABCDEF";
    Text text;
    for (const char byte : bytes) {
        text += digits[static_cast<unsigned char>(byte) >> 4];
        text += digits[byte & 0xF];
    }
    return text;
}

// A value of a type that the program lacks is kept as a memo of its bytes in hexadecimal.
DataType dataType(char letter)
{
    switch (static_cast<jet::ColumnType>(letter)) {
    case jet::ColumnType::YesNo:
        return dbBoolean;
    case jet::ColumnType::Integer:
        return dbInteger;
    case jet::ColumnType::Long:
        return dbLong;
    case jet::ColumnType::Text:
        return dbText;
    case jet::ColumnType::Memo:
    case jet::ColumnType::Other:
        return dbMemo;
    }
    throw BadJet();
}

JetValue valueOf(Item kind, std::string_view bytes)
{
    switch (kind) {
    case Item::Null:
        return {};
    case Item::False:
        return std::int64_t{0};
    case Item::True:
        return std::int64_t{-1};
    case Item::Number:
        require(bytes.size() == 8);
        return static_cast<std::int64_t>(littleEndian(bytes));
    case Item::Wide:
        return wideText(bytes);
    case Item::Ansi:
        return fromAnsi(bytes);
    case Item::Bytes:
        return hexadecimal(bytes);
    default:
        throw BadJet();
    }
}

}

JetStream::JetStream(JetReceiver& receiver, std::uintmax_t fileSize)
    : receiver_(receiver), bytesLeft_(fileSize * kBytesPerByte + kSlack),
      itemsLeft_(fileSize * kItemsPerByte + kSlack)
{
}

// The bytes may hold several items, or only a part of one.
void JetStream::take(std::string_view bytes)
{
    pending_ += bytes;
    std::size_t taken = 0;
    while (const std::size_t size = takeItem(std::string_view(pending_).substr(taken)))
        taken += size;
    pending_.erase(0, taken);
}

// Returns the size of the item, or 0 while it is incomplete. The limits are checked as
// soon as the size is known, before the content is collected.
std::size_t JetStream::takeItem(std::string_view bytes)
{
    if (bytes.size() < kItemHead) return 0;
    const std::size_t size = littleEndian(bytes.substr(1, 4));
    require(size <= bytesLeft_ && itemsLeft_ > 0);
    if (bytes.size() - kItemHead < size) return 0;
    bytesLeft_ -= size;
    --itemsLeft_;
    item(static_cast<Item>(bytes[0]), bytes.substr(kItemHead, size));
    return kItemHead + size;
}

void JetStream::item(Item kind, std::string_view bytes)
{
    require(state_ != State::Ended);
    if (state_ == State::Silent) {
        require(kind == Item::Hello);
        return begin(bytes);
    }
    switch (kind) {
    case Item::Table:
        return newTable(fromUtf8(bytes));
    case Item::Column:
        return addColumn(bytes);
    case Item::End:
        return finish();
    default:
        return addValue(valueOf(kind, bytes));
    }
}

void JetStream::begin(std::string_view greeting)
{
    require(greeting == jet::kHello);
    state_ = State::Begun;
}

// A table or the end of the stream in the middle of a row is an error.
void JetStream::requireRowEnd() const
{
    require(row_.empty());
}

void JetStream::newTable(Text name)
{
    requireRowEnd();
    announceTable();
    name_ = std::move(name);
    columns_.clear();
    state_ = State::Columns;
}

// Only a text column has a useful size. The limits keep the definition of any column
// valid, whatever size the file gives.
void JetStream::addColumn(std::string_view bytes)
{
    require(state_ == State::Columns && bytes.size() > 5);
    const auto size = static_cast<int>(std::min<std::uint64_t>(
        std::max<std::uint64_t>(littleEndian(bytes.substr(1, 4)), 1), kLargestText));
    columns_.push_back({fromUtf8(bytes.substr(5)), dataType(bytes[0]), size});
}

// A table is complete when its first row begins, or the next item after a table without
// rows.
void JetStream::announceTable()
{
    if (state_ != State::Columns) return;
    require(!columns_.empty());
    receiver_.table(name_, columns_);
    state_ = State::Rows;
}

void JetStream::addValue(JetValue value)
{
    announceTable();
    require(state_ == State::Rows);
    row_.push_back(std::move(value));
    if (row_.size() < columns_.size()) return;
    receiver_.row(row_);
    row_.clear();
}

void JetStream::finish()
{
    requireRowEnd();
    announceTable();
    receiver_.end();
    state_ = State::Ended;
}

}
