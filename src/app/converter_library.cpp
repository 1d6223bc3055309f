#include "app/converter_library.h"

#include "app/test_hooks.h"
#include "converter/exports.h"
#include "platform/runtime/codepage932.h"
#include "platform/runtime/paths.h"
#include "platform/system/process.h"

#include <algorithm>
#include <memory>
#include <new>

namespace tolvek {

static_assert(sizeof(TolvekPath) == kPathRecordSize);
static_assert(sizeof(StrChangeRec) == kTextRecordSize);
static_assert(static_cast<int>(ConverterNotes::Why::NoDate) == TolvekNoDate);
static_assert(static_cast<int>(ConverterNotes::Why::StillGrowing) == TolvekStillGrowing);
static_assert(static_cast<int>(ConverterNotes::Why::UnreadableFile) == TolvekUnreadableFile);
static_assert(static_cast<int>(ConverterNotes::Why::NothingThere) == TolvekNothingThere);

namespace {

const Text kLibraryName = u"Tolvek";

RuntimeError missingLibrary(const std::string& file)
{
    return {53, errorText(53) + u" : " + fromUtf8(file), nullptr};
}

RuntimeError missingExport(const char* name)
{
    return {453, u"DLL エントリ ポイント " + fromUtf8(name) + u" が見つかりません。", nullptr};
}

// Stays loaded for the rest of the run. A missing library is looked for again at the
// next call, since it may have been put in place meanwhile.
std::unique_ptr<SharedLibrary> library;

SharedLibrary& loadedLibrary()
{
    if (!library) {
        const std::string file = SharedLibrary::fileName(toUtf8(kLibraryName));
        try {
            library =
                std::make_unique<SharedLibrary>(nativePath(joinPath(appPath(), fromUtf8(file))));
        } catch (const std::system_error& failure) {
            if (failure.code() == std::errc::no_such_file_or_directory) throw missingLibrary(file);
            throw;
        }
    }
    return *library;
}

// nullptr when the library doesn't export the name.
template <class Function> Function* exportedIfAny(const char* name)
{
    SharedLibrary& loaded = loadedLibrary();
    try {
        return reinterpret_cast<Function*>(loaded.symbol(name));
    } catch (const std::system_error& failure) {
        if (failure.code() == std::errc::function_not_supported) return nullptr;
        throw;
    }
}

template <class Function> Function* exported(const char* name)
{
    if (Function* const found = exportedIfAny<Function>(name)) return found;
    throw missingExport(name);
}

// Only this program's own library exports it. A replacement library with the three
// documented exports is called with fixed-size records instead.
decltype(::Tolvek_EditFiles)* ownEdit()
{
    return exportedIfAny<decltype(::Tolvek_EditFiles)>("Tolvek_EditFiles");
}

std::string pathBytes(const Text& path)
{
    return existingPath(cutAtNul(path)).string();
}

// The text, a NUL if there is room for it, then blanks to the end.
template <class Record> Record filled(const std::string& bytes)
{
    Record record;
    std::fill(std::begin(record.bytes), std::end(record.bytes), ' ');
    std::copy(bytes.begin(), bytes.end(), record.bytes);
    if (bytes.size() < sizeof record.bytes) record.bytes[bytes.size()] = '\0';
    return record;
}

// A truncated path would name another file, so a path that doesn't fit is refused.
template <class Record> Record pathRecord(const Text& path)
{
    const std::string bytes = pathBytes(path);
    if (bytes.size() >= sizeof(Record)) throw RuntimeError(75);
    return filled<Record>(bytes);
}

void editByRecords(const Text& list, const Text& mail, const Text& temp, std::int16_t& count,
                   std::int16_t& status)
{
    auto* const call = exported<decltype(::Tolvek_Edit)>("Tolvek_Edit");
    auto listFile = pathRecord<TolvekPath>(list);
    auto mailFile = pathRecord<TolvekPath>(mail);
    auto tempFile = pathRecord<TolvekPath>(temp);
    call(&listFile, &mailFile, &tempFile, &count, &status);
}

// A mail box that can't be read only sets the status, and the walk goes on. An error
// that every box would meet, such as a full disk, is returned and thrown.
void editByNames(decltype(::Tolvek_EditFiles)* call, const Text& list, const Text& mail,
                 const Text& temp, std::int16_t& count, std::int16_t& status)
{
    const int failure = call(pathBytes(list).c_str(), pathBytes(mail).c_str(),
                             pathBytes(temp).c_str(), &count, &status);
    if (failure != 0) throw fileError(std::error_code(failure, std::system_category()));
}

void callTolvekEdit(const Text& list, const Text& mail, const Text& temp, Int16& count,
                    Int16& status)
{
    std::int16_t found = static_cast<std::int16_t>(count);
    std::int16_t state = static_cast<std::int16_t>(status);
    if (auto* const own = ownEdit())
        editByNames(own, list, mail, temp, found, state);
    else
        editByRecords(list, mail, temp, found, state);
    count = found;
    status = state;
}

// Called from C: nothing may leave it. A note that finds no memory is lost.
void takeNote(void* context, std::int32_t why, const char* what)
{
    try {
        static_cast<ConverterNotes*>(context)->leftOut.push_back(
            {static_cast<ConverterNotes::Why>(why), fromUtf8(what)});
    } catch (const std::bad_alloc&) {
    }
}

void callTolvekEditNoted(const Text& list, const Text& mail, const Text& temp, Int16& count,
                         Int16& status, ConverterNotes& notes)
{
    auto* const call = exportedIfAny<decltype(::Tolvek_EditNoted)>("Tolvek_EditNoted");
    if (!call) return callTolvekEdit(list, mail, temp, count, status);
    std::int16_t found = static_cast<std::int16_t>(count);
    std::int16_t state = static_cast<std::int16_t>(status);
    std::int32_t mails = 0;
    const int failure = call(pathBytes(list).c_str(), pathBytes(mail).c_str(),
                             pathBytes(temp).c_str(), &found, &state, &mails, takeNote, &notes);
    if (failure != 0) throw fileError(std::error_code(failure, std::system_category()));
    notes.given = true;
    notes.mails = mails;
    count = found;
    status = state;
}

void requireRecordPath(const Text& path)
{
    if (!ownEdit()) pathRecord<TolvekPath>(path);
}

void callTolvekFriendEdit(const Text& folder, const Text& temp, Int16& count, Int16& second)
{
    auto* const call = exported<decltype(::TolvekFriend_Edit)>("TolvekFriend_Edit");
    auto folderRecord = pathRecord<StrChangeRec>(folder);
    auto tempRecord = pathRecord<StrChangeRec>(temp);
    std::int16_t found = static_cast<std::int16_t>(count);
    std::int16_t other = static_cast<std::int16_t>(second);
    const int failure = call(&folderRecord, &tempRecord, &found, &other);
    if (failure != 0 && ownEdit()) // another library's return value means nothing
        throw fileError(std::error_code(failure, std::system_category()));
    count = found;
    second = other;
}

// The output holds `length` characters, which take at most twice as many bytes. The
// caller cuts the result to that many characters.
void callMailStrChange(const Text& source, Text& result, Int16& length)
{
    auto* const call = exported<decltype(::Mail_StrChange)>("Mail_StrChange");
    auto input = filled<StrChangeRec>(ansiPrefix(source, kTextRecordSize));
    auto output = filled<StrChangeRec>({});
    // filled() puts a NUL first when the text is empty; an output record is all blanks.
    output.bytes[0] = ' ';
    std::int16_t characters = 0;
    call(&input, &output, &characters);
    length = characters;
    const auto bytes = std::clamp(2 * static_cast<int>(characters), 0, kTextRecordSize);
    result = fromAnsi({output.bytes, static_cast<std::size_t>(bytes)});
}

ConverterLibrary loaded()
{
    return {callTolvekEdit, callTolvekFriendEdit, callMailStrChange, requireRecordPath,
            callTolvekEditNoted};
}

ConverterLibrary inUse = loaded();

}

ConverterLibrary& converterLibrary()
{
    return inUse;
}

void hooks::setConverterLibrary(ConverterLibrary replacement)
{
    const bool nothing =
        !replacement.Tolvek_Edit && !replacement.TolvekFriend_Edit && !replacement.Mail_StrChange;
    inUse = nothing ? loaded() : std::move(replacement);
    library.reset();
}

}
