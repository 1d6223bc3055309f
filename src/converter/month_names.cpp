#include "converter/month_names.h"

#include "converter/ascii.h"

#include <array>
#include <string>

namespace tolvek {

namespace {

struct Name {
    std::string_view beginning;
    int month;
};

constexpr std::array<std::string_view, 12> kEnglish{"jan", "feb", "mar", "apr", "may", "jun",
                                                    "jul", "aug", "sep", "oct", "nov", "dec"};

// German, French, Spanish, Italian, Portuguese, Dutch, the Nordic languages, Polish,
// Russian; lower case and without accents. The beginnings are long enough not to match
// the name of a day.
constexpr std::array<Name, 54> kOthers{
    {{"janv", 1}, {"ene", 1},  {"gen", 1},   {"sty", 1},  {"янв", 1},  {"fev", 2},  {"lut", 2},
     {"фев", 2},  {"marz", 3}, {"maerz", 3}, {"mrz", 3},  {"mrt", 3},  {"mars", 3}, {"мар", 3},
     {"avr", 4},  {"abr", 4},  {"kwi", 4},   {"апр", 4},  {"mai", 5},  {"mag", 5},  {"mei", 5},
     {"maj", 5},  {"маи", 5},  {"мая", 5},   {"juin", 6}, {"giu", 6},  {"cze", 6},  {"июн", 6},
     {"juil", 7}, {"lug", 7},  {"lip", 7},   {"июл", 7},  {"aout", 8}, {"ago", 8},  {"sie", 8},
     {"авг", 8},  {"set", 9},  {"wrz", 9},   {"сен", 9},  {"okt", 10}, {"ott", 10}, {"out", 10},
     {"paz", 10}, {"окт", 10}, {"lis", 11},  {"ноя", 11}, {"dez", 12}, {"dic", 12}, {"des", 12},
     {"gru", 12}, {"дек", 12}, {"jui", 7},   {"agu", 8},  {"nop", 11}}};

}

int monthNumber(std::string_view word)
{
    if (word.size() < 3) return 0;
    const std::string lower = lowerAscii(word);
    for (std::size_t index = 0; index < kEnglish.size(); ++index)
        if (lower.starts_with(kEnglish[index])) return static_cast<int>(index) + 1;
    // The first match counts: "juin" and "juil" come before "jui".
    for (const Name& name : kOthers)
        if (lower.starts_with(name.beginning)) return name.month;
    return 0;
}

}
