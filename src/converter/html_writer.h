// Builds the lines of text from the elements of a page. A run of blanks becomes one,
// as on the screen; a source line end between Japanese characters becomes none.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

class HtmlWriter {
public:
    void text(TextView text);
    void newLine();   // ends the line, even an empty one
    void line();      // ends the line unless it is empty
    void paragraph(); // the same, with an empty line before what follows
    void rule();
    void item(TextView mark); // of a list; on the line that begins now
    void nextCell();          // of a table's row
    void quote(int step);     // 1 in, -1 out again
    void keepBlanks(int step);

    std::size_t size() const { return out_.size(); }
    TextView since(std::size_t begin) const;
    // Returns and removes the finished lines; the current one stays.
    Text takeLines();
    Text finish();

private:
    void put(char16_t unit);
    void beginLine();
    void putBlank(char16_t next);

    Text out_;
    int quotes_ = 0;
    int kept_ = 0;
    bool blank_ = false;   // a blank is due before the next character
    bool lineEnd_ = false; // the blank was a line end
    bool lineEmpty_ = true;
    bool gap_ = false;   // an empty line is due
    bool begun_ = false; // something is there already
};

}
