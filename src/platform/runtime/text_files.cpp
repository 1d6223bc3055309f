#include "platform/runtime/text_files.h"

#include "platform/runtime/codepage932.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/runtime_error.h"
#include "platform/runtime/sequential_file.h"

#include <array>
#include <exception>
#include <utility>

namespace tolvek {

namespace {

constexpr int kLastNumber = 255;
constexpr std::string_view kWideBlank = "\x81\x40"; // U+3000

using Slot = std::variant<std::monostate, InputFile, OutputFile>;

bool isOpen(const Slot& slot)
{
    return !std::holds_alternative<std::monostate>(slot);
}

bool isNumber(int number)
{
    return number >= 1 && number <= kLastNumber;
}

Slot& slotOf(int number)
{
    static std::array<Slot, kLastNumber + 1> slots;
    if (number < 1 || number > kLastNumber) throw RuntimeError(52);
    return slots[static_cast<std::size_t>(number)];
}

// The open file of that number; error 54 if it is open in the other mode.
template <class File> File& openFile(int number)
{
    Slot& slot = slotOf(number);
    if (!isOpen(slot)) throw RuntimeError(52);
    if (File* file = std::get_if<File>(&slot)) return *file;
    throw RuntimeError(54);
}

bool hasFolder(const Path& path)
{
    return !path.has_parent_path() || folderExists(path.parent_path());
}

template <class File> void openAs(const Path& path, int number)
{
    Slot& slot = slotOf(number);
    if (isOpen(slot)) throw RuntimeError(55);
    if (path.empty()) throw RuntimeError(75);
    if (!hasFolder(path)) throw RuntimeError(76);
    asFileError([&] { slot = File(path); }); // a failure leaves the slot free
}

bool isAscii(std::string_view bytes)
{
    unsigned char bits = 0;
    for (const char byte : bytes)
        bits |= static_cast<unsigned char>(byte);
    return bits < 0x80;
}

// Most lines of a mail box are header lines in ASCII.
Text decoded(std::string_view bytes)
{
    return isAscii(bytes) ? Text(bytes.begin(), bytes.end()) : fromAnsi(bytes);
}

void skipBlanks(InputFile& file)
{
    for (;;) {
        if (file.isNext(" ") || file.isNext("\t"))
            file.take(1);
        else if (file.isNext(kWideBlank))
            file.take(kWideBlank.size());
        else
            return;
    }
}

// Called before every item: error 62 if only blanks are left.
void beginItem(InputFile& file)
{
    skipBlanks(file);
    if (file.atEnd()) throw RuntimeError(62);
}

// Kept as on the classic platform: text between the closing quote and the next
// delimiter is left for the next item.
Text quotedItem(InputFile& file)
{
    file.take(1);
    Text item = decoded(file.upTo("\""));
    // The closing quote is missing if the file ends inside the item.
    if (file.isNext("\"")) file.take(1);
    file.dropDelimiter();
    return item;
}

Text plainItem(InputFile& file)
{
    Text item = rtrim(decoded(file.upTo(",\r")));
    file.dropDelimiter();
    return item;
}

// The text of a number. Blanks between it and its delimiter are skipped.
Text numberItem(InputFile& file)
{
    beginItem(file);
    Text item = decoded(file.upTo(" \t,\r"));
    while (file.isNext(" ") || file.isNext("\t"))
        file.take(1);
    file.dropDelimiter();
    return item;
}

template <class Number> Number inputNumber(int number, Number (*convert)(TextView))
{
    Text item = asFileError([&] { return numberItem(openFile<InputFile>(number)); });
    try {
        return convert(item);
    } catch (const RuntimeError& error) {
        // A text that isn't a number reads as 0; a number out of range stays an
        // error.
        if (error.number() != 13) throw;
        return Number(0);
    }
}

std::string itemBytes(const WriteItem& item)
{
    if (const int* value = std::get_if<int>(&item)) return std::to_string(*value);
    return '"' + toAnsi(std::get<TextView>(item)) + '"';
}

}

Int16 freeFile()
{
    for (int number = 1; number <= kLastNumber; ++number)
        if (!isOpen(slotOf(number))) return number;
    throw RuntimeError(67);
}

void openForInput(TextView path, Int16 number)
{
    openAs<InputFile>(existingPath(path), number);
}

void openForOutput(TextView path, Int16 number)
{
    const Path target = targetPath(path);
    // The superuser could write to it all the same; the mode bits decide.
    if (isReadOnly(target)) throw RuntimeError(75);
    openAs<OutputFile>(target, number);
}

bool endOfFile(Int16 number)
{
    return asFileError([&] { return openFile<InputFile>(number).atEnd(); });
}

Text lineInput(Int16 number)
{
    InputFile& file = openFile<InputFile>(number);
    return asFileError([&] {
        if (file.atEnd()) throw RuntimeError(62);
        return decoded(file.line());
    });
}

Text inputText(Int16 number)
{
    InputFile& file = openFile<InputFile>(number);
    return asFileError([&] {
        beginItem(file);
        return file.isNext("\"") ? quotedItem(file) : plainItem(file);
    });
}

Int16 inputInt16(Int16 number)
{
    return inputNumber<Int16>(number, toInt16);
}

std::int32_t inputInt32(Int16 number)
{
    return inputNumber<std::int32_t>(number, toInt32);
}

void writeItems(Int16 number, std::initializer_list<WriteItem> items)
{
    writeItems(number, std::span(items.begin(), items.size()));
}

void writeItems(Int16 number, std::span<const WriteItem> items)
{
    OutputFile& file = openFile<OutputFile>(number);
    std::string line;
    for (const WriteItem& item : items)
        line += (line.empty() ? "" : ",") + itemBytes(item);
    asFileError([&] { file.write(line + "\r\n"); });
}

void flushFile(Int16 number)
{
    OutputFile& file = openFile<OutputFile>(number);
    asFileError([&] { file.flush(); });
}

// The number is free even if closing fails.
void closeFile(Int16 number)
{
    if (!isNumber(number)) return;
    Slot closing = std::exchange(slotOf(number), Slot());
    if (OutputFile* file = std::get_if<OutputFile>(&closing)) asFileError([&] { file->close(); });
}

void closeAllFiles()
{
    // All files are closed before the first failure is rethrown.
    std::exception_ptr failure;
    for (int number = 1; number <= kLastNumber; ++number) {
        try {
            closeFile(number);
        } catch (const RuntimeError&) {
            if (!failure) failure = std::current_exception();
        }
    }
    if (failure) std::rethrow_exception(failure);
}

}
