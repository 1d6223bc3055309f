// Parses a temp file like the program's reader, for tests: labels by their first
// characters, values after one separator.
#pragma once
#include "platform/runtime/codepage932.h"
#include "platform/runtime/text.h"
#include "support/temp_folder.h"

#include <filesystem>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace tolvek::test {

struct ReadMail {
    std::string from, to, subject, date;
    std::vector<std::string> lines;
    bool ended = false;

    std::string text() const
    {
        std::string joined;
        for (const std::string& line : lines)
            joined += (joined.empty() && &line == &lines.front() ? "" : "\n") + line;
        return joined;
    }
};

inline std::vector<std::string> ansiLines(const std::string& bytes)
{
    std::vector<std::string> lines;
    for (std::size_t begin = 0; begin < bytes.size();) {
        const std::size_t end = bytes.find("\r\n", begin);
        if (end == std::string::npos) throw std::runtime_error("a line without CR LF");
        lines.push_back(bytes.substr(begin, end - begin));
        begin = end + 2;
    }
    return lines;
}

inline std::string utf8OfAnsi(const std::string& ansi)
{
    return toUtf8(fromAnsi(ansi));
}

inline std::vector<ReadMail> readTemp(const std::filesystem::path& path)
{
    const auto lines = ansiLines(readBytes(path));
    if (lines.empty() || lines.front() != "<Start>") throw std::runtime_error("no <Start>");
    std::vector<ReadMail> mails;
    bool inText = false;
    for (std::size_t at = 1; at < lines.size(); ++at) {
        if (mails.empty() || mails.back().ended) mails.emplace_back();
        ReadMail& mail = mails.back();
        const std::string line = utf8OfAnsi(lines[at]);
        if (line.starts_with("<End>"))
            mail.ended = true, inText = false;
        else if (inText)
            mail.lines.push_back(line);
        else if (line.starts_with("From"))
            mail.from = line.substr(5);
        else if (line.starts_with("To"))
            mail.to = line.substr(3);
        else if (line.starts_with("Subject"))
            mail.subject = line.substr(8);
        else if (line.starts_with("Date"))
            mail.date = line.substr(5);
        else
            inText = line.starts_with("Mail");
    }
    return mails;
}

}
