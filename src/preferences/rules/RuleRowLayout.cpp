#include "preferences/rules/RuleRowLayout.h"

#include <algorithm>

namespace kestrelbay {

namespace {

constexpr int kEdge = 10;
constexpr QSize kIcon{28, 28};
constexpr int kTextX = 46;
constexpr int kNameHeight = 17;
constexpr int kPathHeight = 13;
constexpr int kNameGap = 2;
constexpr int kBadgeGap = 5;
constexpr QSize kToggle{38, 20};
constexpr QSize kButton{22, 22};
constexpr QSize kHandle{16, 22};

// Controls that belong together stand closer: the two buttons, then the grip.
constexpr int kHandleGap = 8;
constexpr int kButtonGap = 4;
constexpr int kToggleGap = 12;
constexpr int kRecorderGap = 14;
constexpr int kSignGap = 6;
constexpr int kTextGap = 14;

constexpr int kRecorderHeight = 26;
constexpr int kTriggerHeight = 13;
constexpr int kTriggerGap = 1;
// From a hotkey of four modifiers in the narrowest window to one that does not float
// in emptiness in a wide one. The names get most of the width.
constexpr int kNarrowestRecorder = 150;
constexpr int kWidestRecorder = 200;
constexpr int kNarrowestRow = 584;
constexpr int kRowPerRecorder = 8;

int recorderWidth(int rowWidth) {
    return std::clamp(kNarrowestRecorder + (rowWidth - kNarrowestRow) / kRowPerRecorder,
                      kNarrowestRecorder, kWidestRecorder);
}

}  // namespace

RuleRowLayout RuleRowLayout::in(QSize row, const Content &content) {
    RuleRowLayout layout;
    const auto centered = [&row](int x, QSize size) {
        return QRect(QPoint(x, (row.height() - size.height()) / 2), size);
    };
    int right = row.width() - kEdge;
    const auto takeFromRight = [&](QSize size, int gap) {
        right -= size.width();
        const QRect place = centered(right, size);
        right -= gap;
        return place;
    };
    layout.dragHandle = takeFromRight(kHandle, kHandleGap);
    layout.remove = takeFromRight(kButton, kButtonGap);
    layout.advanced = takeFromRight(kButton, kToggleGap);
    layout.toggle = takeFromRight(kToggle, kRecorderGap);
    layout.recorder = takeFromRight({recorderWidth(row.width()), kRecorderHeight}, kSignGap);
    if (content.hasTrigger) {
        layout.recorder.moveTop((row.height() - kRecorderHeight - kTriggerGap - kTriggerHeight) /
                                2);
        layout.trigger = QRect(layout.recorder.left(), layout.recorder.bottom() + 1 + kTriggerGap,
                               layout.recorder.width(), kTriggerHeight);
    }
    if (content.hasSign)
        layout.sign = takeFromRight(kSign, 0);
    right = right - kTextGap + (content.hasSign ? 0 : kSignGap);

    layout.icon = centered(kEdge, kIcon);
    const int textWidth = std::max(0, right - kTextX);
    const int top = (row.height() - kNameHeight - kNameGap - kPathHeight) / 2;
    layout.path = QRect(kTextX, top + kNameHeight + kNameGap, textWidth, kPathHeight);
    const int badgeRoom = content.badge.isEmpty() ? 0 : content.badge.width() + kBadgeGap;
    const int nameWidth = std::min(content.nameWidth, std::max(0, textWidth - badgeRoom));
    layout.name = QRect(kTextX, top, nameWidth, kNameHeight);
    if (!content.badge.isEmpty())
        layout.badge = QRect(QPoint(kTextX + nameWidth + kBadgeGap,
                                    top + (kNameHeight - content.badge.height()) / 2),
                             content.badge);
    return layout;
}

}  // namespace kestrelbay
