#include "help/help_search.h"

#include "platform/forms/qt_text.h"

#include <algorithm>

namespace tolvek {

namespace {

constexpr TextView kBetweenWords = u" \u3000\t";
constexpr qsizetype kLineRoom = 80; // units of a result's line

std::vector<Text> split(TextView text, TextView separators)
{
    std::vector<Text> parts;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t end = std::min(text.find_first_of(separators, at), text.size());
        if (end > at) parts.emplace_back(text.substr(at, end - at));
        at = end + 1;
    }
    return parts;
}

// A half-width kana with its mark is as long as two characters that it equals one of,
// so the length isn't always the word's.
int matchedLength(TextView word, TextView rest)
{
    const std::size_t longest = std::min(2 * word.size(), rest.size());
    for (std::size_t length = (word.size() + 1) / 2; length <= longest; ++length)
        if (compareText(rest.substr(0, length), word, Compare::TextMode) == 0)
            return static_cast<int>(length);
    return static_cast<int>(std::min(word.size(), rest.size()));
}

QString lineAt(TextView text, int at)
{
    const QString all = toQt(text);
    const qsizetype start = all.left(at).lastIndexOf(QLatin1Char('\n')) + 1;
    const qsizetype end = all.indexOf(QLatin1Char('\n'), at);
    return all.mid(start, end < 0 ? -1 : end - start).trimmed().left(kLineRoom);
}

// The line of the first place behind the heading, which repeats the title.
QString lineOf(const HelpBook::Page& page, const std::vector<TextRange>& places)
{
    for (const TextRange& place : places)
        if (const QString line = lineAt(page.text, place.start); line != page.title) return line;
    return {};
}

struct Ranked {
    HelpHit hit;
    bool inTitle = false;
    std::size_t places = 0;
};

std::optional<Ranked> rank(const HelpBook::Page& page, const std::vector<Text>& words)
{
    Ranked found{{page.name, page.title, {}}};
    for (const Text& word : words) {
        const auto places = placesOf(word, page.text);
        const bool inTitle = inStr(fromQt(page.title), word, Compare::TextMode) > 0;
        if (places.empty() && !inTitle) return {};
        found.inTitle = found.inTitle || inTitle;
        found.places += places.size();
        if (found.hit.line.isEmpty()) found.hit.line = lineOf(page, places);
    }
    return found;
}

}

std::vector<Text> wordsOf(TextView typed)
{
    return split(typed, kBetweenWords);
}

std::vector<TextRange> placesOf(TextView word, TextView text)
{
    std::vector<TextRange> places;
    if (word.empty()) return places;
    for (int at = 1; (at = inStr(text, word, Compare::TextMode, at)) > 0;) {
        const int length = matchedLength(word, text.substr(static_cast<std::size_t>(at - 1)));
        places.push_back({at - 1, length});
        at += length;
    }
    return places;
}

std::vector<HelpHit> searchHelp(const HelpBook& book, TextView typed)
{
    const std::vector<Text> words = wordsOf(typed);
    if (words.empty()) return {};
    std::vector<Ranked> found;
    for (const HelpBook::Page& page : book.pages())
        if (auto ranked = rank(page, words)) found.push_back(std::move(*ranked));
    std::ranges::stable_sort(found, [](const Ranked& a, const Ranked& b) {
        return a.inTitle != b.inTitle ? a.inTitle : a.places > b.places;
    });
    std::vector<HelpHit> hits;
    for (Ranked& ranked : found)
        hits.push_back(std::move(ranked.hit));
    return hits;
}

Text explainedPart(TextView message, const HelpBook::Page& page)
{
    constexpr std::size_t kShortest = 4;
    Text longest;
    // Between brackets or quotation marks are numbers and names that no page has.
    for (const Text& part : split(message, u"\r\n（）()'")) {
        const Text wanted = trim(part);
        if (wanted.size() >= std::max(kShortest, longest.size() + 1) &&
            inStr(page.text, wanted, Compare::TextMode) > 0)
            longest = wanted;
    }
    return longest;
}

}
