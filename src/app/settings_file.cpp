#include "app/settings_file.h"

#include "app/file_names.h"
#include "app/file_routines.h"
#include "app/guard.h"
#include "app/program_end.h"
#include "app/settings.h"
#include "platform/runtime/directory.h"
#include "platform/runtime/do_events.h"
#include "platform/runtime/msg_box.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/paths.h"
#include "platform/runtime/profile.h"

#include <cmath>

namespace tolvek {

namespace {

constexpr int kBufferSize = 255; // bytes, as on the classic platform: a value has at most 254
constexpr int kDigits = 16;

constexpr TextView kEnvironment = u"Tolvek Environment";
constexpr TextView kPostPet = u"PostPet Mail Option";
constexpr TextView kPosition = u"Form Position";
constexpr TextView kOptions = u"Mail Options";
constexpr TextView kFont = u"Mail Font";
constexpr TextView kFriend = u"Friend Editer";
constexpr TextView kNoDigits = u"0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0";
constexpr TextView kPostPetHome = u"C:\\Program Files\\So-net\\PostPet for Windows ver. 2.0";

Text readValue(const Profile& file, TextView section, TextView key, TextView fallback = {})
{
    return cutAtNul(file.get(section, key, fallback, kBufferSize));
}

// `fallback` stands for a missing key, `ifEmpty` for a key without a value.
Int16 readInt16(const Profile& file, TextView section, TextView key, TextView fallback,
                double ifEmpty)
{
    const Text value = readValue(file, section, key, fallback);
    return value.empty() ? friendTwips(ifEmpty) : toInt16(value);
}

std::int32_t readInt32(const Profile& file, TextView section, TextView key, TextView fallback,
                       double ifEmpty)
{
    const Text value = readValue(file, section, key, fallback);
    return value.empty() ? static_cast<std::int32_t>(std::nearbyint(ifEmpty)) : toInt32(value);
}

[[noreturn]] void reportAndEnd(TextView trouble)
{
    MsgBox(gIniPath + Text(trouble));
    endProgram();
}

// The only key that may not be empty: every path of a read is built from it.
void readPostPetDir(const Profile& file)
{
    int returnedLength = 0;
    const Text value =
        file.get(kPostPet, u"PostPet Dir", kPostPetHome, kBufferSize, &returnedLength);
    if (returnedLength == 0) reportAndEnd(u"　読み込みエラー　PostPet Path");
    gPostPetDir = cutAtNul(value);
}

void readPostPetOptions(const Profile& file)
{
    readPostPetDir(file);
    gMyMailAddr = readValue(file, kPostPet, u"My Mail Addr");
    gMyMailHandle = readValue(file, kPostPet, u"My Mail Handle");
    gMyPetName = readValue(file, kPostPet, u"My Pet Name");
    gDisplayType = readInt16(file, kPostPet, u"Display Type", u"", 0);
    DoEvents();
}

// The corner is set before the size. At a first start the window is therefore centred
// by its designed size, and only then gets the size below.
void readPosition(const Profile& file, WindowPlacement& window)
{
    window.setTop(readInt32(file, kPosition, u"Form Top    Position", u"",
                            (window.ScreenHeight() - window.Height()) / 2.0));
    window.setLeft(readInt32(file, kPosition, u"Form Left   Position", u"",
                             (window.ScreenWidth() - window.Width()) / 2.0));
    window.setWidth(readInt32(file, kPosition, u"Form Width  Position", u"", 11745));
    window.setHeight(readInt32(file, kPosition, u"Form Height Position", u"", 7404));
    DoEvents();
}

// Every second character is a digit. The commas in between are never checked.
void readDigits(const Profile& file, TextView key, CheckedArray<Int16, 17>& digits)
{
    const Text value = readValue(file, kOptions, key, kNoDigits);
    for (int i = 0; i < kDigits; ++i)
        digits[i] = toInt16(mid(value, 2 * i + 1, 1));
}

void readFont(const Profile& file)
{
    gMailTextFont = readValue(file, kFont, u"Mail Text Font", u"ＭＳ ゴシック");
    // Kept quirk: a missing key gives 10, an empty value 9.
    gMailTextFontSize = readInt32(file, kFont, u"Mail Text Font Size", u"10", 9);
    gMailTextFontStyle = readValue(file, kFont, u"Mail Text Font Style", u"0,0");
    DoEvents();
}

Text columnKey(int column)
{
    return u"Col Width" + decimal(column);
}

void readFriendEditor(const Profile& file, const WindowPlacement& window)
{
    gFriendWidth = readInt16(file, kFriend, u"Width", u"9225", 9225);
    gFriendHeight = readInt16(file, kFriend, u"Height", u"5445", 5445);
    gFriendTop =
        readInt16(file, kFriend, u"Top", u"", (window.ScreenHeight() - gFriendHeight) / 2.0);
    gFriendLeft =
        readInt16(file, kFriend, u"Left", u"", (window.ScreenWidth() - gFriendWidth) / 2.0);
    for (int column = 1; column < gFriendColWidth.size(); ++column)
        gFriendColWidth[column] = readInt16(file, kFriend, columnKey(column), u"", 900);
    DoEvents();
}

void readAll(WindowPlacement& window)
{
    const Profile file(gIniPath);
    gVer = toInt32(readValue(file, kEnvironment, u"Ver", u"999"));
    readPostPetOptions(file);
    readPosition(file, window);
    readDigits(file, u"Send Mail Read Option", gSendMailReadOption);
    readDigits(file, u"Reciev Mail Read Option", gRecievMailReadOption);
    readFont(file);
    readFriendEditor(file, window);
}

void writeValue(TextView section, TextView key, const Text& value)
{
    if (!writeProfileString(section, key, value, gIniPath)) reportAndEnd(u"　書き込みエラー");
}

void writeNumber(TextView section, TextView key, std::int32_t value)
{
    writeValue(section, key, decimal(value));
}

void writePostPetOptions()
{
    // An empty value would end every later start, so the previous one stays in the
    // file.
    if (!trim(gPostPetDir).empty()) writeValue(kPostPet, u"PostPet Dir", gPostPetDir);
    writeValue(kPostPet, u"My Mail Addr", gMyMailAddr);
    writeValue(kPostPet, u"My Mail Handle", gMyMailHandle);
    writeValue(kPostPet, u"My Pet Name", gMyPetName);
    writeNumber(kPostPet, u"Display Type", gDisplayType);
    DoEvents();
}

// A maximised window's values are written like any others. A minimised window writes
// none, so the file keeps the previous ones.
void writePosition(const WindowPlacement& window)
{
    if (window.WindowState() == 1) return;
    writeNumber(kPosition, u"Form Top    Position", window.Top());
    writeNumber(kPosition, u"Form Left   Position", window.Left());
    writeNumber(kPosition, u"Form Width  Position", window.Width());
    writeNumber(kPosition, u"Form Height Position", window.Height());
    DoEvents();
}

void writeDigits(TextView key, const CheckedArray<Int16, 17>& digits)
{
    Text value = decimal(digits[0]);
    for (int i = 1; i < kDigits; ++i)
        value += u"," + decimal(digits[i]);
    writeValue(kOptions, key, value);
}

void writeFont()
{
    writeValue(kFont, u"Mail Text Font", gMailTextFont);
    writeNumber(kFont, u"Mail Text Font Size", gMailTextFontSize);
    writeValue(kFont, u"Mail Text Font Style", gMailTextFontStyle);
    DoEvents();
}

void writeFriendEditor()
{
    writeNumber(kFriend, u"Width", gFriendWidth);
    writeNumber(kFriend, u"Height", gFriendHeight);
    writeNumber(kFriend, u"Top", gFriendTop);
    writeNumber(kFriend, u"Left", gFriendLeft);
    for (int column = 1; column < gFriendColWidth.size(); ++column)
        writeNumber(kFriend, columnKey(column), gFriendColWidth[column]);
}

}

// An early version kept the file in the Windows folder. It is deleted there whether or
// not the copy succeeded: a file that already is beside the executable is never
// overwritten. The statements belong to the splash form's load and are reported under
// that name. gIniPath is set in any case.
void findSettingsFile()
{
    const ResumeNext on{u"Form_Load"};
    const Text target = joinPath(appPath(), kSettingsName);
    on([&] {
        const Text windows = GetWinDir();
        if (windows.empty()) return;
        const Text old = joinPath(windows, kSettingsName);
        if (!FileNameCheck(old)) return;
        CopyFileA(old, target, 1);
        kill(old);
    });
    gIniPath = target;
}

void iniRead(WindowPlacement& window)
{
    try {
        readAll(window);
    } catch (const std::exception&) {
        // The exit writes all fields, also those that weren't read. The copy saves
        // their values.
        CopyFileA(gIniPath, sideFile(gIniPath, kOldSettingsSuffix), 0);
        throw;
    }
}

void writeVersion()
{
    // Same form as in the file: 3.3.1 is 331.
    gVer = Int16(kAppMajor * 100 + kAppMinor * 10 + kAppRevision);
    writeNumber(kEnvironment, u"Ver", gVer);
}

void iniWrite(const WindowPlacement& window)
{
    writePostPetOptions();
    writeVersion();
    writePosition(window);
    writeDigits(u"Send Mail Read Option", gSendMailReadOption);
    writeDigits(u"Reciev Mail Read Option", gRecievMailReadOption);
    writeFont();
    writeFriendEditor();
}

}
