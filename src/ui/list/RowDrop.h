#pragma once

#include <cstddef>
#include <optional>

#include <QString>
#include <QStringView>
#include <QWidget>

namespace kestrelbay {

/// The gap into which a drag at y would drop: that above the row of this index, below the
/// last one when it is the number of rows; null on a row, where nothing is dropped. A
/// quarter of a row belongs to the gap next to it. Everything above the first row and below
/// the last one is the gap there. y counts from the top of the first row.
[[nodiscard]] std::optional<int> gapAt(int y, int pitch, int rows);

/// What a dragged row carries: its index as a decimal number.
[[nodiscard]] QString textOfDraggedRow(int row);

/// The index that a drag carries. Nothing but decimal digits with at most one sign
/// before them is an index; it need not be that of an existing row.
[[nodiscard]] std::optional<std::ptrdiff_t> draggedRow(QStringView text);

/// The index that a row has once it was dropped into the gap above another: what
/// follows it moves up when it leaves its place.
[[nodiscard]] std::ptrdiff_t dropDestination(std::ptrdiff_t source, std::ptrdiff_t gap);

/// By how much a list scrolls under a drag near its edge, at each tick: more, the
/// nearer it is; negative upwards; 0 away from the edges.
[[nodiscard]] int autoscrollStep(int y, int viewHeight);

/// The line between two rows at which a drag would drop: a ring, then a line.
class DropLine final : public QWidget {
    Q_OBJECT

public:
    static constexpr int kHeight = 10;

    explicit DropLine(QWidget *parent);

    /// Shows it centred on y, moved as far as it takes to be inside the parent.
    void showAt(int y, int left, int width);

protected:
    void paintEvent(QPaintEvent *event) override;
};

}  // namespace kestrelbay
