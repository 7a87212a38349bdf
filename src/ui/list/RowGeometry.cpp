#include "ui/list/RowGeometry.h"

#include <algorithm>

namespace kestrelbay {

std::optional<int> RowGeometry::rowAt(int y) const {
    if (y < 0 || y >= contentHeight())
        return std::nullopt;
    return y / pitch();
}

RowGeometry::Range RowGeometry::rowsBetween(int top, int bottom) const {
    const int first = std::clamp(top / pitch(), 0, count);
    const int end = std::clamp((bottom + pitch() - 1) / pitch(), first, count);
    return {.first = first, .end = end};
}

int RowGeometry::offsetShowing(int row, int offset, int viewHeight) const {
    const int above = gap(row);
    const int below = gap(row + 1);
    if (above < offset || pitch() > viewHeight)
        return above;
    return std::max(offset, below - viewHeight);
}

int RowGeometry::rowsOfPage(int viewHeight) const {
    return std::max(1, viewHeight / pitch() - 1);
}

}  // namespace kestrelbay
