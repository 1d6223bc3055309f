#include "converter/address.h"

#include "converter/ascii.h"
#include "converter/encoded_words.h"

#include <algorithm>

namespace tolvek {

namespace {

// Parses one field and collects phrase, comment and bracketed address of each mailbox.
class Scanner {
public:
    explicit Scanner(TextView text) : text_(text) {}

    std::vector<Mailbox> scan()
    {
        while (at_ < text_.size())
            step();
        finish();
        return std::move(found_);
    }

private:
    void step()
    {
        // An encoded word is copied whole: its content may hold quotes, commas or
        // brackets.
        if (takeWord(target(), encodedWordAt(text_, at_).length)) return;
        const char16_t unit = text_[at_++];
        switch (unit) {
        case u'"':
            quoted();
            break;
        case u'(':
            comment();
            break;
        case u'<':
            if (!angle_.empty() && !inAngle_)
                finishBefore(); // a second address without a comma between
            inAngle_ = true;
            break;
        case u'>':
            inAngle_ = false;
            named_ = phrase_.size();
            break;
        case u',':
            // A comma inside brackets separates the hops of a route, which the colon
            // drops.
            inAngle_ ? void(angle_ += unit) : finish();
            break;
        case u';':
            finish();
            break;
        case u':':
            colon();
            break;
        default:
            target() += unit;
        }
    }

    Text& target() { return inAngle_ ? angle_ : phrase_; }

    bool takeWord(Text& to, std::size_t length)
    {
        to += text_.substr(at_, length);
        at_ += length;
        return length > 0;
    }

    // Only a word that has its end mark is copied whole here: one without would
    // swallow the closing quote, or the closing bracket of a comment.
    void quoted()
    {
        while (at_ < text_.size() && text_[at_] != u'"') {
            if (takeWord(target(), closedWordLength(text_, at_))) continue;
            if (text_[at_] == u'\\' && at_ + 1 < text_.size()) ++at_;
            target() += text_[at_++];
        }
        ++at_;
    }

    void comment()
    {
        int depth = 1;
        if (!comment_.empty()) comment_ += u' ';
        while (at_ < text_.size()) {
            if (takeWord(comment_, closedWordLength(text_, at_))) continue;
            const char16_t unit = text_[at_++];
            if (unit == u'(') ++depth;
            if (unit == u')' && --depth == 0) return;
            if (unit == u'\\' && at_ < text_.size())
                comment_ += text_[at_++];
            else
                comment_ += unit;
        }
    }

    // Inside brackets a colon ends a route; outside it ends the name of a group,
    // unless an address came first.
    void colon()
    {
        if (inAngle_)
            angle_.clear();
        else if (phrase_.find(u'@') == Text::npos)
            phrase_.clear();
    }

    // The text after an address is the name of the next mailbox, whose "<" has come.
    void finishBefore()
    {
        Text next = phrase_.substr(std::min(named_, phrase_.size()));
        phrase_.resize(std::min(named_, phrase_.size()));
        finish();
        phrase_ = std::move(next);
    }

    // The first of several addresses without commas between them. It must be an "@"
    // with text on both sides, then a blank, then a further "@"; brackets would have
    // separated the addresses already.
    static Text firstAddress(const Text& phrase)
    {
        const std::size_t first = phrase.find(u'@');
        const std::size_t blank = phrase.find_first_of(u" \t\n", first);
        const bool several = first > 0 && blank != Text::npos && blank > first + 1 &&
                             !isAsciiSpace(phrase[first - 1]) &&
                             phrase.find(u'@', blank) != Text::npos &&
                             phrase.find_first_of(u"<>") == Text::npos;
        if (!several) return phrase;
        const std::size_t begin = phrase.find_last_of(u" \t\n", first) + 1; // npos + 1 is 0
        return phrase.substr(begin, blank - begin);
    }

    static bool isForeign(const Text& text)
    {
        const Text decoded = decodeEncodedWords(text);
        return std::any_of(decoded.begin(), decoded.end(),
                           [](char16_t unit) { return unit >= 0x80; });
    }

    void finish()
    {
        const Text phrase(trimSpace(TextView(phrase_)));
        Mailbox box;
        Text rawAddress = angle_;
        Text rawName = phrase;
        if (angle_.empty() && phrase.find(u'@') != Text::npos) {
            rawAddress = firstAddress(phrase);
            rawName.clear();
        }
        // A comment is preferred where only it is beyond ASCII: it holds the name in
        // the sender's own script.
        if (rawName.empty() || (isForeign(comment_) && !isForeign(rawName))) rawName = comment_;
        // Folds and stray blanks are never part of an address.
        std::erase_if(rawAddress, [](char16_t unit) { return isAsciiSpace(unit); });
        box.address = decodeEncodedWords(rawAddress);
        box.name = Text(trimSpace(TextView(decodeEncodedWords(rawName))));
        if (!box.name.empty() || !box.address.empty()) found_.push_back(std::move(box));
        phrase_.clear(), comment_.clear(), angle_.clear();
        inAngle_ = false;
        named_ = 0;
    }

    TextView text_;
    std::size_t at_ = 0;
    bool inAngle_ = false;
    std::size_t named_ = 0; // length of the phrase before the address
    Text phrase_, comment_, angle_;
    std::vector<Mailbox> found_;
};

// Some programs put a whole address, or "name <address>", into one pair of quotes.
Text withoutOuterQuotes(Text name)
{
    while (name.size() >= 2 && name.front() == name.back() &&
           (name.front() == u'"' || name.front() == u'\''))
        name = Text(trimSpace(TextView(name).substr(1, name.size() - 2)));
    return name;
}

bool showsItself(TextView address)
{
    return address.find(u'.') != TextView::npos && address.find(u'@') != TextView::npos;
}

// The reader of the temp file accepts both characters in full width too.
bool looksLikeAddress(TextView name)
{
    return name.find_first_of(u".．") != TextView::npos &&
           name.find_first_of(u"@＠") != TextView::npos;
}

Text widened(Text text)
{
    for (char16_t& unit : text) {
        if (unit == u'(') unit = u'（';
        if (unit == u')') unit = u'）';
        if (unit == u'<') unit = u'＜';
        if (unit == u'>') unit = u'＞';
    }
    return text;
}

}

std::vector<Mailbox> parseMailboxes(std::string_view rawValue)
{
    const Text text = unfoldedText(rawValue);
    auto found = Scanner(text).scan();
    for (Mailbox& box : found) {
        // A quoted string or an encoded word may hold name and address together; it is
        // parsed once more.
        const bool hidden = box.address.empty() && box.name.find(u'@') != Text::npos;
        const auto inner = hidden ? Scanner(box.name).scan() : std::vector<Mailbox>();
        if (!inner.empty()) box = inner.front();
        box.name = withoutOuterQuotes(std::move(box.name));
    }
    return found;
}

Mailbox firstMailbox(std::string_view rawValue)
{
    const auto found = parseMailboxes(rawValue);
    // "undisclosed-recipients" or a bare name is taken only when no address follows.
    const auto real = std::find_if(found.begin(), found.end(), [](const Mailbox& box) {
        return box.address.find(u'@') != Text::npos;
    });
    if (real != found.end()) return *real;
    return found.empty() ? Mailbox{} : found.front();
}

Text mailboxValue(const Mailbox& mailbox)
{
    // A name that only repeats the address would be shown twice.
    Text name = mailbox.name == mailbox.address ? Text() : widened(mailbox.name);
    const Text address = widened(mailbox.address);
    if (address.empty()) return name;
    if (showsItself(address)) return name.empty() ? address : address + u" (" + name + u")";
    if (looksLikeAddress(name))
        for (char16_t& unit : name)
            if (unit == u'.' || unit == u'．') unit = u'・';
    return name + (name.empty() ? u"<" : u" <") + address + u">";
}

}
