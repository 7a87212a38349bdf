#include "ui/list/RowDrop.h"

#include <QByteArray>

#include <algorithm>
#include <charconv>

namespace kestrelbay {

namespace {

constexpr int kAutoscrollMargin = 32;
/// At 60 ticks a second about twenty rows.
constexpr int kFastestAutoscroll = 18;

int autoscrollSpeed(int distance) {
    if (distance >= kAutoscrollMargin)
        return 0;
    const int nearness = kAutoscrollMargin - std::max(distance, 0);
    return std::max(1, kFastestAutoscroll * nearness / kAutoscrollMargin);
}

}  // namespace

DropProposal proposedDrop(const RowGeometry &rows, int y) {
    const auto row = rows.rowAt(y);
    if (!row)
        return {.operation = DropOperation::Above, .row = y < 0 ? 0 : rows.count};
    const int within = y - rows.gap(*row);
    const int quarter = rows.pitch() / 4;
    if (within < quarter)
        return {.operation = DropOperation::Above, .row = *row};
    if (within >= rows.pitch() - quarter)
        return {.operation = DropOperation::Above, .row = *row + 1};
    return {.operation = DropOperation::On, .row = *row};
}

bool isDropAccepted(const DropProposal &proposal) {
    return proposal.operation == DropOperation::Above;
}

std::optional<int> gapAt(int y, int pitch, int rows) {
    if (y < 0 || y >= rows * pitch)
        return y < 0 ? 0 : rows;
    const int row = y / pitch;
    const int within = y % pitch;
    if (within < pitch / 4)
        return row;
    return within >= pitch - pitch / 4 ? std::optional(row + 1) : std::nullopt;
}

QString textOfDraggedRow(int row) {
    return QString::number(row);
}

std::optional<std::ptrdiff_t> draggedRow(QStringView text) {
    // from_chars knows the minus only.
    if (text.startsWith(u'+')) {
        text = text.sliced(1);
        if (text.startsWith(u'-'))
            return std::nullopt;
    }
    // Other scripts' digits become question marks here.
    const QByteArray digits = text.toLatin1();
    const char *const end = digits.constData() + digits.size();
    std::ptrdiff_t row = 0;
    const auto [stopped, error] = std::from_chars(digits.constData(), end, row);
    if (error != std::errc() || stopped != end)
        return std::nullopt;
    return row;
}

std::ptrdiff_t dropDestination(std::ptrdiff_t source, std::ptrdiff_t gap) {
    return source < gap ? gap - 1 : gap;
}

int autoscrollStep(int y, int viewHeight) {
    const int up = autoscrollSpeed(y);
    const int down = autoscrollSpeed(viewHeight - 1 - y);
    // In a list too low for two margins the nearer edge wins.
    return up > down ? -up : down > up ? down : 0;
}

}  // namespace kestrelbay
