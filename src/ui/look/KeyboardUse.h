#pragma once

#include <QObject>

namespace kestrelbay {

/// Notes in each window whether it is being used with the keyboard, which is when focus
/// rings are shown: Qt::WA_KeyboardFocusChange. Qt itself sets that at the first Tab and
/// leaves it so for as long as the window is shown. Here every key sets it, but for
/// modifiers, and every press of a mouse button takes it back. What holds for a sheet holds
/// for the windows below it, to which the user returns.
///
/// One for the program, made after its QApplication. Main thread.
class KeyboardUse final : public QObject {
    Q_OBJECT

public:
    KeyboardUse();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
};

}  // namespace kestrelbay
