#pragma once

#include <QRect>

namespace kestrelbay {

/// Where things lie in a rule row, in device-independent pixels.
struct RuleRowLayout {
    static constexpr QSize kSign{16, 16};

    /// The row's content as far as it takes part in the layout.
    struct Content {
        /// Width of the name when nothing is cut off.
        int nameWidth = 0;
        /// Empty when there is no badge.
        QSize badge;
        /// That the hotkey does not arrive.
        bool hasSign = false;
        /// What the system calls the hotkey.
        bool hasTrigger = false;
    };

    QRect icon;
    QRect name;
    QRect badge;
    QRect path;
    QRect sign;
    QRect recorder;
    /// Below the recorder; empty when there is none.
    QRect trigger;
    QRect toggle;
    QRect advanced;
    QRect remove;
    QRect dragHandle;

    [[nodiscard]] static RuleRowLayout in(QSize row, const Content &content);
};

}  // namespace kestrelbay
