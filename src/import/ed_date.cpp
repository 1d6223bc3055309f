#include "app/state.h"
#include "import/mail_fields.h"
#include "platform/runtime/numbers.h"

namespace tolvek {
namespace {

constexpr TextView kTwoDigits = u"00";

// Scans a date part by part. A scan without an end test runs to the limit of the 16-bit
// position when its mark is missing: error 6. That is how a date with too few parts
// fails.
class DateScan {
public:
    explicit DateScan(TextView text) : text_(text) {}

    Text partUpTo(char16_t mark)
    {
        const int start = position_;
        while (at(position_) != mark)
            ++position_;
        return takeFrom(start);
    }

    // Ends at ":" or "+", or when the position exceeds twice the number of characters
    // (the length in bytes).
    Text minute()
    {
        const int start = position_;
        while (at(position_) != u':' && at(position_) != u'+' && position_ <= byteLength(text_))
            ++position_;
        endedAtColon_ = at(position_) == u':';
        return takeFrom(start);
    }

    // A "+" only ends a time without seconds; the zone after it is never read.
    Text second() const { return endedAtColon_ ? mid(text_, position_, 2) : Text(kTwoDigits); }

private:
    char16_t at(int position) const
    {
        const auto index = static_cast<std::size_t>(position) - 1;
        return index < text_.size() ? text_[index] : u'\0';
    }

    // The part up to the mark; scanning continues after it.
    Text takeFrom(int start)
    {
        Text part = mid(text_, start, position_ - start);
        ++position_;
        return part;
    }

    TextView text_;
    Int16 position_ = 1;
    bool endedAtColon_ = false;
};

// Removes a three-letter day name with its comma and blank. Kept: of a first word of
// any other length the rest is left.
void dropDayName(Text& value)
{
    if (value[0] >= u'0' && value[0] <= u'9') return;
    overwrite(value, 1, u"    ", 4);
    value = trim(value);
}

Text monthNumber(const Text& name)
{
    for (int month = 0; month < 12; ++month)
        if (name == gMonthName[month]) return format(month + 1, kTwoDigits);
    return Text(kTwoDigits);
}

// Kept: the century is put before the year's digits as written, so 5 becomes 205.
Text fullYear(const Text& year)
{
    const Int16 number = toInt16(year);
    if (number >= 100) return year;
    return (number < 98 ? u"20" : u"19") + year;
}

}

void edDate(const Text& line, Text& YMD, Text& HMS)
{
    YMD.clear();
    HMS.clear();
    Text value = line;
    // "Date" and its separator.
    overwrite(value, 1, u"     ", 5);
    value = trim(value);
    if (value.empty()) return;
    dropDayName(value);
    DateScan scan{value};
    const Text day = format(toInt16(scan.partUpTo(u' ')), kTwoDigits);
    const Text month = monthNumber(scan.partUpTo(u' '));
    const Text year = fullYear(scan.partUpTo(u' '));
    const Text hour = scan.partUpTo(u':');
    const Text minute = scan.minute();
    const Text second = scan.second();
    YMD = trim(year) + trim(month) + trim(day);
    HMS = trim(hour) + trim(minute) + trim(second);
}

}
