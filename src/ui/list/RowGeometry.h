#pragma once

#include <optional>

namespace kestrelbay {

/// Where the rows of a table lie: all of one height, with the same space between
/// them, half of which is above the first and below the last. In device-independent
/// pixels; y counts from the top of the first row's space.
struct RowGeometry {
    /// Rows from `first` up to but without `end`.
    struct Range {
        int first = 0;
        int end = 0;

        [[nodiscard]] bool contains(int row) const { return row >= first && row < end; }
        bool operator==(const Range &) const = default;
    };

    int rowHeight = 0;
    int spacing = 0;
    int count = 0;

    /// From one row to the next.
    [[nodiscard]] int pitch() const { return rowHeight + spacing; }
    [[nodiscard]] int contentHeight() const { return count * pitch(); }
    [[nodiscard]] int top(int row) const { return row * pitch() + spacing / 2; }
    /// The middle of the space above the row; of that below the last one for `count`.
    [[nodiscard]] int gap(int row) const { return row * pitch(); }
    /// Each row has half of the space on either side of it.
    [[nodiscard]] std::optional<int> rowAt(int y) const;
    /// The rows of which something lies between the two.
    [[nodiscard]] Range rowsBetween(int top, int bottom) const;
    /// The offset nearest to the given one at which a view shows the whole row.
    [[nodiscard]] int offsetShowing(int row, int offset, int viewHeight) const;
    /// By how many rows a page moves; at least one.
    [[nodiscard]] int rowsOfPage(int viewHeight) const;
};

}  // namespace kestrelbay
