// A letter for people to read: as plain text and as part of an HTML page. UTF-8.
#pragma once
#include "letters/letter.h"

#include <string>

namespace tolvek {

// "2001/04/01 10:11:12"; a part that isn't in the stored date is left out or is 0.
Text shownDate(const Letter& letter);
// "name <address>", or what there is of it.
Text shownName(TextView name, TextView address);

std::string plainPage(const Letter& letter);

std::string htmlBeginning();
std::string htmlArticle(const Letter& letter);
std::string htmlEnd();

}
