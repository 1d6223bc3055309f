#include "letters/window/month_axis.h"

#include <algorithm>

namespace tolvek {

MonthAxis::MonthAxis(std::vector<int> years) : years_(std::move(years))
{
    std::erase(years_, 0);
    std::ranges::sort(years_);
    years_.erase(std::unique(years_.begin(), years_.end()), years_.end());
}

int MonthAxis::monthAt(int cell) const
{
    if (years_.empty()) return 0;
    const int inside = std::clamp(cell, 0, size() - 1);
    return years_[static_cast<std::size_t>(inside / 12)] * 100 + inside % 12 + 1;
}

int MonthAxis::cellOf(int month) const
{
    const auto year = std::ranges::lower_bound(years_, month / 100);
    const int ofYear = month % 100;
    if (year == years_.end() || *year != month / 100 || ofYear < 1 || ofYear > 12) return -1;
    return static_cast<int>(year - years_.begin()) * 12 + ofYear - 1;
}

int MonthAxis::firstCell(int month) const
{
    for (int cell = 0; cell < size(); ++cell)
        if (monthAt(cell) >= month) return cell;
    return size();
}

int MonthAxis::lastCell(int month) const
{
    for (int cell = size() - 1; cell >= 0; --cell)
        if (monthAt(cell) <= month) return cell;
    return -1;
}

}
