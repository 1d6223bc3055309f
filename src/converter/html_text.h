// Converts HTML to readable text: paragraphs, lists, table rows, links with their
// address, marked quotes; no styles or scripts, nothing fetched.
#pragma once
#include "platform/runtime/text.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace tolvek {

class HtmlWriter;

// Takes a page in pieces and passes on its text in pieces that end with a line, so
// that a page of any size costs little more than one of 1 MB.
class HtmlReader {
public:
    explicit HtmlReader(std::function<void(TextView)> take);
    ~HtmlReader();

    void add(TextView html);
    void finish();

private:
    void parsePieces(bool last);
    void parse(std::string_view piece);

    std::function<void(TextView)> take_;
    std::unique_ptr<HtmlWriter> out_;
    std::string rest_; // UTF-8, not yet parsed
};

// The charset declared by the page itself; empty if there is none.
std::string charsetOfHtml(std::string_view bytes);

}
