// The lines that a page's elements become. Runs of blanks are one, as on the
// screen; between Japanese characters the end of a source line is none.
#pragma once
#include "platform/runtime/text.h"

namespace tolvek {

class HtmlWriter {
public:
    void text(TextView text);
    void newLine();   // ends the line, also an empty one
    void line();      // ends the line unless it is empty
    void paragraph(); // the same, with an empty line before what follows
    void rule();
    void item(TextView mark); // of a list; on the line that begins now
    void nextCell();          // of a table's row
    void quote(int step);     // 1 in, -1 out again
    void keepBlanks(int step);

    std::size_t size() const { return out_.size(); }
    TextView since(std::size_t begin) const;
    // The lines that are finished; the one that was begun stays.
    Text takeLines();
    Text finish();

private:
    void put(char16_t unit);
    void beginLine();
    void putBlank(char16_t next);

    Text out_;
    int quotes_ = 0;
    int kept_ = 0;
    bool blank_ = false;   // one is due before the next character
    bool lineEnd_ = false; // it came from a line's end
    bool lineEmpty_ = true;
    bool gap_ = false;   // an empty line is due
    bool begun_ = false; // something is there already
};

}
