#include "converter/html_text.h"

#include "converter/ascii.h"
#include "converter/html_pieces.h"
#include "converter/html_writer.h"

#include <gumbo.h>

#include <algorithm>
#include <array>
#include <memory>

namespace tolvek {

namespace {

template <std::size_t N> bool isIn(const std::array<GumboTag, N>& tags, GumboTag tag)
{
    return std::find(tags.begin(), tags.end(), tag) != tags.end();
}

// Elements whose content is no text of the letter.
bool isSkipped(GumboTag tag)
{
    static constexpr std::array kTags{GUMBO_TAG_HEAD,     GUMBO_TAG_STYLE,  GUMBO_TAG_SCRIPT,
                                      GUMBO_TAG_TITLE,    GUMBO_TAG_OBJECT, GUMBO_TAG_APPLET,
                                      GUMBO_TAG_TEMPLATE, GUMBO_TAG_IFRAME, GUMBO_TAG_SELECT};
    return isIn(kTags, tag);
}

bool isParagraph(GumboTag tag)
{
    static constexpr std::array kTags{GUMBO_TAG_P,  GUMBO_TAG_H1, GUMBO_TAG_H2, GUMBO_TAG_H3,
                                      GUMBO_TAG_H4, GUMBO_TAG_H5, GUMBO_TAG_H6};
    return isIn(kTags, tag);
}

bool isBlock(GumboTag tag)
{
    static constexpr std::array kTags{
        GUMBO_TAG_DIV,     GUMBO_TAG_CENTER,  GUMBO_TAG_ADDRESS, GUMBO_TAG_ARTICLE,
        GUMBO_TAG_SECTION, GUMBO_TAG_HEADER,  GUMBO_TAG_FOOTER,  GUMBO_TAG_UL,
        GUMBO_TAG_OL,      GUMBO_TAG_LI,      GUMBO_TAG_DL,      GUMBO_TAG_DT,
        GUMBO_TAG_DD,      GUMBO_TAG_TABLE,   GUMBO_TAG_TR,      GUMBO_TAG_BLOCKQUOTE,
        GUMBO_TAG_PRE,     GUMBO_TAG_LISTING, GUMBO_TAG_XMP,     GUMBO_TAG_CAPTION,
        GUMBO_TAG_FORM,    GUMBO_TAG_DIR,     GUMBO_TAG_MENU,    GUMBO_TAG_FIELDSET,
        GUMBO_TAG_NAV,     GUMBO_TAG_MAIN,    GUMBO_TAG_ASIDE,   GUMBO_TAG_FIGURE};
    return isIn(kTags, tag) || isParagraph(tag);
}

bool keepsBlanks(GumboTag tag)
{
    static constexpr std::array kTags{GUMBO_TAG_PRE, GUMBO_TAG_LISTING, GUMBO_TAG_XMP,
                                      GUMBO_TAG_TEXTAREA, GUMBO_TAG_PLAINTEXT};
    return isIn(kTags, tag);
}

std::string attribute(const GumboElement& element, const char* name)
{
    const GumboAttribute* found = gumbo_get_attribute(&element.attributes, name);
    return found == nullptr ? std::string() : std::string(found->value);
}

bool isHidden(const GumboElement& element)
{
    std::string style = lowerAscii(attribute(element, "style"));
    // "display: none" is written with and without the blank.
    std::erase(style, ' ');
    return style.find("display:none") != std::string::npos;
}

// Only links that a reader of plain text could follow; not cid: or javascript:.
bool isAddress(const std::string& link)
{
    const std::string lower = lowerAscii(link);
    return lower.starts_with("http:") || lower.starts_with("https:") || lower.starts_with("ftp:") ||
           lower.starts_with("mailto:");
}

std::string bareAddress(std::string_view link)
{
    const std::string lower = lowerAscii(link);
    for (const std::string_view scheme : {"http://", "https://", "ftp://", "mailto:"})
        if (lower.starts_with(scheme)) link.remove_prefix(scheme.size());
    while (link.ends_with("/"))
        link.remove_suffix(1);
    return lowerAscii(link);
}

class Walker {
public:
    explicit Walker(HtmlWriter& out) : out_(out) {}

    void walk(const GumboNode& node)
    {
        switch (node.type) {
        case GUMBO_NODE_TEXT:
        case GUMBO_NODE_WHITESPACE:
        case GUMBO_NODE_CDATA:
            out_.text(fromUtf8(node.v.text.text));
            break;
        case GUMBO_NODE_ELEMENT:
            element(node.v.element);
            break;
        default:
            break;
        }
    }

private:
    void element(const GumboElement& element)
    {
        const GumboTag tag = element.tag;
        if (isSkipped(tag) || isHidden(element)) return;
        if (tag == GUMBO_TAG_BR) return out_.newLine();
        if (tag == GUMBO_TAG_HR) return out_.rule();
        if (tag == GUMBO_TAG_IMG) return out_.text(fromUtf8(attribute(element, "alt")));
        if (tag == GUMBO_TAG_A) return link(element);
        // Cells stay on one line, so that a row reads as one.
        if (tag == GUMBO_TAG_TD || tag == GUMBO_TAG_TH) out_.nextCell();
        isBlock(tag) ? block(element) : children(element);
    }

    void block(const GumboElement& element)
    {
        const GumboTag tag = element.tag;
        const bool quote = tag == GUMBO_TAG_BLOCKQUOTE;
        // Lists may be nested.
        const int numberBefore = number_;
        isParagraph(tag) ? out_.paragraph() : out_.line();
        if (quote) out_.quote(1);
        if (keepsBlanks(tag)) out_.keepBlanks(1);
        if (tag == GUMBO_TAG_OL || tag == GUMBO_TAG_UL) number_ = tag == GUMBO_TAG_OL ? 1 : 0;
        if (tag == GUMBO_TAG_LI) out_.item(number_ > 0 ? decimal(number_++) + u". " : Text(u"・"));
        children(element);
        if (tag == GUMBO_TAG_OL || tag == GUMBO_TAG_UL) number_ = numberBefore;
        if (keepsBlanks(tag)) out_.keepBlanks(-1);
        isParagraph(tag) ? out_.paragraph() : out_.line();
        if (quote) out_.quote(-1);
    }

    void link(const GumboElement& element)
    {
        const std::size_t begin = out_.size();
        children(element);
        const std::string address = attribute(element, "href");
        const std::string shown = lowerAscii(toUtf8(trimSpace(out_.since(begin))));
        // Mails often show the address itself as the link; it isn't repeated.
        const bool isShown = shown.find(bareAddress(address)) != std::string::npos;
        if (isAddress(address) && !isShown) out_.text(u" <" + fromUtf8(address) + u"> ");
    }

    void children(const GumboElement& element)
    {
        for (unsigned at = 0; at < element.children.length; ++at)
            walk(*static_cast<const GumboNode*>(element.children.data[at]));
    }

    HtmlWriter& out_;
    int number_ = 0; // of the next item; 0 in a list without numbers
};

}

HtmlReader::HtmlReader(std::function<void(TextView)> take)
    : take_(std::move(take)), out_(std::make_unique<HtmlWriter>())
{
}

HtmlReader::~HtmlReader() = default;

void HtmlReader::add(TextView html)
{
    const std::size_t begin = rest_.size();
    rest_ += toUtf8(html);
    // The tree holds C strings, which a NUL would cut off.
    std::replace(rest_.begin() + static_cast<std::ptrdiff_t>(begin), rest_.end(), '\0', ' ');
    // A smaller page is parsed at once by finish().
    if (rest_.size() > kHtmlPiece) parsePieces(false);
}

void HtmlReader::finish()
{
    parsePieces(true);
    take_(out_->finish());
}

// A piece that extends to the end of what has arrived waits for more.
void HtmlReader::parsePieces(bool last)
{
    std::string_view html = rest_;
    while (!html.empty()) {
        const std::size_t length = htmlPiece(html);
        if (length == html.size() && !last) break;
        parse(html.substr(0, length));
        html.remove_prefix(length);
    }
    rest_.erase(0, rest_.size() - html.size());
}

void HtmlReader::parse(std::string_view piece)
{
    const auto destroy = [](GumboOutput* output) {
        gumbo_destroy_output(&kGumboDefaultOptions, output);
    };
    const std::unique_ptr<GumboOutput, decltype(destroy)> parsed(
        gumbo_parse_with_options(&kGumboDefaultOptions, piece.data(), piece.size()), destroy);
    Walker(*out_).walk(*parsed->root);
    take_(out_->takeLines());
}

std::string charsetOfHtml(std::string_view bytes)
{
    // The element must be near the beginning; 40 characters are more than any name.
    const std::string lower = lowerAscii(bytes.substr(0, 2048));
    const std::size_t meta = lower.find("<meta");
    const std::size_t mark = lower.find("charset=", std::min(meta, lower.size()));
    if (mark == std::string::npos) return {};
    const std::string value = lower.substr(mark + 8, 40);
    const std::size_t begin = std::min(value.find_first_not_of("\"' "), value.size());
    return value.substr(begin, value.find_first_of("\"' />;", begin) - begin);
}

}
