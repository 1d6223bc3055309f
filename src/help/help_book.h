// The manual as it was read from the help file: its pages and pictures, the table of
// contents, and the index of terms.
//
// The two lists are pages themselves (index.html, terms.html): what their links say is
// what the window shows beside the page. So the manual can be read in any browser too.
#pragma once
#include "help/help_pack.h"
#include "platform/runtime/paths.h"

#include <map>
#include <vector>

namespace tolvek {

// A line of one of the two lists. A heading has no address.
struct HelpLink {
    QString title;
    QString address; // page.html or page.html#place
};

class HelpBook {
public:
    static constexpr QLatin1StringView kContents{"index.html"};
    static constexpr QLatin1StringView kTerms{"terms.html"};

    // None if the file can't be read or isn't a help file with a table of contents.
    static std::optional<HelpBook> read(const Path& file);
    explicit HelpBook(HelpItems items);

    const QByteArray* item(const QString& name) const; // null if there is none
    const std::vector<HelpLink>& contents() const { return contents_; }
    const std::vector<HelpLink>& terms() const { return terms_; }

    struct Page {
        QString name;
        QString title;
        Text text; // as the page shows it, one unit for each position
    };
    // All pages, in the order of the contents, the contents first.
    const std::vector<Page>& pages() const { return pages_; }
    const Page* page(const QString& name) const;

private:
    void addPage(const QString& name);

    HelpItems items_;
    std::vector<HelpLink> contents_, terms_;
    std::vector<Page> pages_;
};

}
