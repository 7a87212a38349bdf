#pragma once

#include <QAbstractNativeEventFilter>

namespace kestrelbay::x11 {

/// While somebody grabs the keyboard, the X server tells the focused window that it has
/// lost the focus, and afterwards that it has it again. Nothing has moved, but Qt would
/// take it for a change of window: a field that records a hotkey, for which the tap grabs
/// the keyboard, would end at once. This keeps such news from Qt as long as it exists.
/// To be made with a QCoreApplication.
class GrabFocusFilter final : public QAbstractNativeEventFilter {
public:
    GrabFocusFilter();

    bool nativeEventFilter(const QByteArray &type, void *message, qintptr *result) override;
};

}  // namespace kestrelbay::x11
