#include "platform/system/windows/command_line.h"

#include "platform/system/windows/wide_path.h"

namespace tolvek {

namespace {

// A backslash counts as one of the text unless a quote follows the run of them.
std::wstring quoted(const std::wstring& argument)
{
    if (!argument.empty() && argument.find_first_of(L" \t\n\v\"") == std::wstring::npos)
        return argument;
    std::wstring text = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t unit : argument) {
        if (unit == L'"') text.append(backslashes + 1, L'\\');
        backslashes = unit == L'\\' ? backslashes + 1 : 0;
        text += unit;
    }
    return text.append(backslashes, L'\\') + L'"';
}

}

std::wstring commandLine(const std::filesystem::path& program,
                         const std::vector<std::string>& arguments)
{
    // Quotes can't be part of a path, so the first word needs no more than its own.
    std::wstring line = L'"' + program.native() + L'"';
    for (const std::string& argument : arguments)
        line += L' ' + quoted(wideText(argument));
    return line;
}

}
