// Full text search in the manual. Case, width and the kind of kana don't matter.
#pragma once
#include "help/help_book.h"

namespace tolvek {

// The words of a search, separated by blanks of either width.
std::vector<Text> wordsOf(TextView typed);

struct TextRange {
    int start; // from 0
    int length;
};
// Every place of a word, in the order of the text.
std::vector<TextRange> placesOf(TextView word, TextView text);

struct HelpHit {
    QString page, title;
    QString line; // of the first place behind the heading; may be empty
};
// The pages that have all the words: those with one in the title first, then by the
// number of places.
std::vector<HelpHit> searchHelp(const HelpBook& book, TextView typed);

// The part of a message box's text by which a page explains it: the longest one that
// the page has. Empty if it has none.
Text explainedPart(TextView message, const HelpBook::Page& page);

}
