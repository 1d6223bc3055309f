#include "converter/html_pieces.h"

#include "converter/ascii.h"

#include <map>
#include <string>

namespace tolvek {

namespace {

constexpr int kDeepest = 500;
constexpr long kMostReopened = 500'000; // sum of the open elements at each tag
constexpr std::size_t kLongestName = 12;

// The name of the tag whose "<" is at the front, with the slash of an end tag.
std::string tagName(std::string_view html)
{
    std::size_t end = 1;
    while (end < html.size() && end <= kLongestName &&
           (isAsciiLetter(static_cast<unsigned char>(html[end])) ||
            isAsciiDigit(static_cast<unsigned char>(html[end])) || (end == 1 && html[end] == '/')))
        ++end;
    return lowerAscii(html.substr(1, end - 1));
}

// Elements that have no content, or that the parser closes by itself, add no depth.
bool staysOpen(const std::string& name)
{
    for (const std::string_view closed :
         {"br", "img", "hr",     "meta", "link", "input", "p",    "li",   "td",   "tr", "th",
          "dt", "dd",  "option", "col",  "area", "base",  "html", "body", "head", "wbr"})
        if (name == closed) return false;
    return true;
}

}

std::size_t htmlPiece(std::string_view html)
{
    std::map<std::string, int, std::less<>> open;
    int depth = 0;
    long reopened = 0;
    for (std::size_t at = html.find('<'); at != std::string_view::npos;
         at = html.find('<', at + 1)) {
        const std::string name = tagName(html.substr(at));
        if (name.empty()) continue;
        // Cut only before a tag, so that no tag is split; at > 0 makes sure of
        // progress.
        const bool tooMuch = at > kHtmlPiece || depth > kDeepest || reopened > kMostReopened;
        if (tooMuch && at > 0) return at;
        reopened += depth;
        if (name[0] == '/') {
            const auto found = open.find(std::string_view(name).substr(1));
            const bool closes = found != open.end() && found->second > 0;
            // An end tag without its element closes nothing in the parser either.
            if (closes) --found->second, --depth;
        } else if (staysOpen(name)) {
            ++open[name], ++depth;
        }
    }
    return html.size();
}

}
