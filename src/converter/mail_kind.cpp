#include "converter/mail_kind.h"

#include "converter/ascii.h"
#include "converter/head_lines.h"
#include "converter/header_fields.h"
#include "converter/separator_line.h"

#include <algorithm>
#include <string>
#include <vector>

namespace tolvek {

namespace {

// Bytes; enough for the head of a real mail.
constexpr std::size_t kBeginning = 1 << 16;

std::string_view withoutCr(std::string_view line)
{
    while (!line.empty() && line.back() == '\r')
        line.remove_suffix(1);
    return line;
}

// Whether a recognisable head begins here, with a field. One of a mail's own fields is
// enough as long as nothing is broken; after a NUL, or a line that is no field, there
// must be two.
bool isMessageHead(const std::vector<std::string_view>& lines, std::size_t at)
{
    int own = 0;
    bool broken = false;
    for (std::size_t index = at; index < lines.size(); ++index) {
        const std::string_view line = withoutCr(lines[index]);
        if (line.empty()) break;
        if (line.find('\0') != std::string_view::npos) broken = true;
        if (index > at && (line[0] == ' ' || line[0] == '\t')) continue;
        const bool field = !fieldName(line).empty();
        if (!field && index == at) return false;
        if (!field && own > 0 && !broken) return true;
        broken = broken || !field;
        own += isOwnField(line) ? 1 : 0;
    }
    return own >= (broken ? 2 : 1);
}

std::string readBeginning(const std::filesystem::path& path)
{
    OpenFile file(path, OpenFile::Mode::Read);
    std::string bytes(kBeginning, '\0');
    std::size_t size = 0;
    while (const std::size_t got = file.read(bytes.data() + size, bytes.size() - size)) {
        size += got;
        if (size == bytes.size()) break;
    }
    bytes.resize(size);
    return bytes;
}

// As in LineSource: a CR ends a line in a file without LF.
std::string withLf(std::string_view text)
{
    if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    std::string lines(text);
    if (lines.find('\n') == std::string::npos) std::replace(lines.begin(), lines.end(), '\r', '\n');
    return lines;
}

}

bool beginsLikeSeparator(std::string_view line)
{
    return line.starts_with("From ") && !equalsAscii(fieldName(line), "from");
}

MailFileKind recognise(std::string_view beginning)
{
    if (beginning.empty()) return MailFileKind::Empty;
    const std::string text = withLf(beginning);
    const auto lines = linesOf(text);
    std::size_t at = 0;
    while (at < lines.size() && (trimSpace(lines[at]).empty() || isEnvelopeLine(lines[at])))
        ++at;
    if (at == lines.size()) return MailFileKind::Nothing;
    const std::string_view first = withoutCr(lines[at]);
    if (isSeparatorLine(first)) return MailFileKind::Mbox;
    // A separator in an unknown form counts if a head follows.
    if (beginsLikeSeparator(first) && isMessageHead(lines, at + 1)) return MailFileKind::Mbox;
    const bool stuffed = first.starts_with(">From ");
    return isMessageHead(lines, at + (stuffed ? 1 : 0)) ? MailFileKind::Message
                                                        : MailFileKind::Nothing;
}

bool isBinaryByte(char c)
{
    // 0Eh and 0Fh are SO and SI, 1Bh is ESC, 1Ah ends old texts.
    constexpr std::string_view kOfTexts("\t\n\f\r\x0E\x0F\x1A\x1B");
    return c >= 0 && c < 0x20 && kOfTexts.find(c) == std::string_view::npos;
}

bool isBinaryFile(const std::filesystem::path& path)
{
    if (!fileExists(path)) return false;
    const std::string beginning = readBeginning(path);
    return std::any_of(beginning.begin(), beginning.end(), isBinaryByte);
}

MailFileKind recogniseFile(const std::filesystem::path& path)
{
    return fileExists(path) ? recognise(readBeginning(path)) : MailFileKind::Nothing;
}

}
