#pragma once

#include <QAbstractNativeEventFilter>

namespace kestrelbay::x11 {

/// At a grab of the keyboard the X server tells the focused window that it has lost the
/// focus. Nothing has moved, but Qt would take it for a change of window: a field that
/// records a hotkey, for which the tap grabs the keyboard, would end at once. As long as
/// this exists, Qt does not hear of grabs. It has to when it grabs the keyboard itself, for
/// a list that pops up: the keys would be those of the window behind as well.
///
/// That a grab has ended always comes through: to a window that has lost nothing it means
/// nothing. To be made with a QCoreApplication.
class GrabFocusFilter final : public QAbstractNativeEventFilter {
public:
    GrabFocusFilter();

    bool nativeEventFilter(const QByteArray &type, void *message, qintptr *result) override;
};

}  // namespace kestrelbay::x11
