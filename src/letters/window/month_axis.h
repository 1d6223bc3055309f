// The months that the strip of years shows: all twelve of every year that has letters.
// Years without any are left out, so that one letter with a wrong clock doesn't press all
// others into a corner.
#pragma once
#include "letters/query.h"

#include <vector>

namespace tolvek {

class MonthAxis {
public:
    MonthAxis() = default;
    explicit MonthAxis(std::vector<int> years); // sorted here; 0 is left out

    int size() const { return static_cast<int>(years_.size()) * 12; }
    const std::vector<int>& years() const { return years_; }
    int monthAt(int cell) const; // yyyymm; a cell outside gives the nearest one
    int cellOf(int month) const; // -1 if its year isn't there
    // The first cell at or after `month`, and the last at or before it.
    int firstCell(int month) const;
    int lastCell(int month) const;

private:
    std::vector<int> years_;
};

}
