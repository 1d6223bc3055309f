#include "filter/filter_edit_area.h"

namespace tolvek {

namespace {

bool isBlank(const Text& text)
{
    return trim(text).empty();
}

// An untouched area isn't a fault worth a message: the button was probably hit by
// accident.
bool isUntouched(const FilterEditArea& area)
{
    return area.TermsCode == kNoneSet && area.ActionCode == kNoneSet && isBlank(area.Header) &&
           isBlank(area.Data);
}

// Text mode also finds the full-width forms ｜ and ＇.
bool hasSpecial(const Text& text)
{
    return inStr(text, u"|", Compare::TextMode) != 0 || inStr(text, u"'", Compare::TextMode) != 0;
}

}

EditFault editFault(const FilterEditArea& area)
{
    // The order of the fields on the form.
    if (isUntouched(area)) return EditFault::Untouched;
    if (isBlank(area.Header)) return EditFault::Header;
    if (area.TermsCode == kNoneSet) return EditFault::Terms;
    if (area.ActionCode == kNoneSet) return EditFault::Action;
    if (isBlank(area.Data)) return EditFault::Data;
    if (hasSpecial(area.Header) || hasSpecial(area.Data)) return EditFault::Special;
    return EditFault::None;
}

TextView faultMessage(EditFault fault)
{
    switch (fault) {
    case EditFault::Header:
        return u"表示タイトルを入力して下さい。";
    case EditFault::Terms:
        return u"ルールを１っ選んでください。";
    case EditFault::Action:
        return u"アクションを１っ選んでください。";
    case EditFault::Data:
        return u"フィルター条件を入力して下さい。";
    case EditFault::Special:
        return u"特殊文字 ' と | は使用できません。";
    case EditFault::None:
    case EditFault::Untouched:
        break;
    }
    return {};
}

TextView missingChoice(const FilterEditArea& area)
{
    if (area.TermsCode == kNoneSet) return u"ルールを選択してください";
    if (area.ActionCode == kNoneSet) return u"アクションを選択してください";
    return {};
}

FilterRule editedRule(const FilterEditArea& area)
{
    return {0, area.TermsCode, area.ActionCode, trim(area.Header), trim(area.Data)};
}

}
