#include "converter/exports.h"

#include "converter/conversion.h"
#include "converter/friend_book.h"
#include "converter/record_fields.h"
#include "converter/str_change.h"
#include "platform/runtime/paths.h"

#include <exception>
#include <filesystem>

namespace tolvek {

static_assert(static_cast<int>(LeftOut::Why::NoDate) == TolvekNoDate);
static_assert(static_cast<int>(LeftOut::Why::StillGrowing) == TolvekStillGrowing);
static_assert(static_cast<int>(LeftOut::Why::UnreadableFile) == TolvekUnreadableFile);
static_assert(static_cast<int>(LeftOut::Why::NothingThere) == TolvekNothingThere);

namespace {

// An exception must not cross the C interface; it becomes the status of a failure.
template <class Work> Conversion guarded(Work work)
{
    try {
        return work();
    } catch (const std::exception&) {
        return {ConversionStatus::Failed};
    }
}

void tell(const Conversion& conversion, std::int16_t* count, std::int16_t* status)
{
    if (count != nullptr) *count = conversion.count;
    if (status != nullptr) *status = static_cast<std::int16_t>(conversion.status);
}

// The path as given if it exists, else matched as the program matches names: ignoring
// case and the composition of kana.
std::filesystem::path foundPath(const std::string& bytes)
{
    if (bytes.empty() || entryExists(bytes)) return bytes;
    return existingPath(fromUtf8(bytes));
}

template <class Record> std::string textOf(const Record& record)
{
    return recordText(record.bytes, sizeof record.bytes);
}

Conversion edit(const TolvekPath* mailFile, const TolvekPath* tempFile)
{
    if (mailFile == nullptr || tempFile == nullptr) return {ConversionStatus::Failed};
    // Only what is read is matched to existing names: the temp file may not exist yet.
    return convertMailBox(foundPath(textOf(*mailFile)), textOf(*tempFile));
}

Conversion editFiles(const char* mailFile, const char* tempFile)
{
    if (mailFile == nullptr || tempFile == nullptr) return {ConversionStatus::Failed};
    return convertMailBox(foundPath(mailFile), tempFile);
}

Conversion friendEdit(const StrChangeRec* folder, const StrChangeRec* tempFile)
{
    if (folder == nullptr || tempFile == nullptr) return {ConversionStatus::Failed};
    return convertFriendBook(foundPath(textOf(*folder)), textOf(*tempFile));
}

// If decoding fails, the text is returned unchanged.
ChangedText changed(const StrChangeRec& input)
{
    const std::string text = textOf(input);
    try {
        return strChange(text, sizeof input.bytes);
    } catch (const std::exception&) {
        return {text, static_cast<int>(text.size())};
    }
}

}

}

int Tolvek_Edit(TolvekPath*, TolvekPath* mailFile, TolvekPath* tempFile, std::int16_t* count,
                std::int16_t* status)
{
    tolvek::tell(tolvek::guarded([&] { return tolvek::edit(mailFile, tempFile); }), count, status);
    return 0;
}

int Tolvek_EditFiles(const char*, const char* mailFile, const char* tempFile, std::int16_t* count,
                     std::int16_t* status)
{
    const tolvek::Conversion conversion =
        tolvek::guarded([&] { return tolvek::editFiles(mailFile, tempFile); });
    tolvek::tell(conversion, count, status);
    return conversion.failure.value();
}

int Tolvek_EditNoted(const char*, const char* mailFile, const char* tempFile, std::int16_t* count,
                     std::int16_t* status, std::int32_t* mails, TolvekNote* note, void* context)
{
    const tolvek::Conversion conversion =
        tolvek::guarded([&] { return tolvek::editFiles(mailFile, tempFile); });
    tolvek::tell(conversion, count, status);
    if (mails != nullptr) *mails = conversion.mails;
    if (note != nullptr)
        for (const tolvek::LeftOut& left : conversion.leftOut)
            note(context, static_cast<std::int32_t>(left.why), left.what.c_str());
    return conversion.failure.value();
}

int TolvekFriend_Edit(StrChangeRec* folder, StrChangeRec* tempFile, std::int16_t* count,
                      std::int16_t* status)
{
    const tolvek::Conversion conversion =
        tolvek::guarded([&] { return tolvek::friendEdit(folder, tempFile); });
    tolvek::tell(conversion, count, status);
    return conversion.failure.value();
}

int Mail_StrChange(StrChangeRec* input, StrChangeRec* output, std::int16_t* length)
{
    if (input == nullptr || output == nullptr || length == nullptr) return 0;
    const tolvek::ChangedText text = tolvek::changed(*input);
    tolvek::fillRecord(output->bytes, sizeof output->bytes, text.ansi);
    *length = static_cast<std::int16_t>(text.length);
    return 0;
}
