#pragma once

#include <functional>
#include <utility>

#include "ui/windows/ProgramWindow.h"

class QScrollArea;

namespace kestrelbay {

/// A window of one size, with a title bar and a close button only. Where the screen has no room
/// for that it is smaller, and scrolls. Escape and the desktop's key for closing windows close it
/// as that button does; Return presses the button that has the focus.
class FixedWindow final : public ProgramWindow {
    Q_OBJECT

public:
    FixedWindow(QSize size, const QString &title);

    /// Of the window's size, to be filled.
    [[nodiscard]] QWidget *content() const;
    /// Of the window where there is room for it.
    [[nodiscard]] QSize sizeHint() const override { return content()->size(); }

    /// The user closes the window; not called when the program hides it. It may
    /// call deleteLater() on the window, but not delete it.
    void setCloseHandler(std::function<void()> handler) { closeHandler_ = std::move(handler); }

    /// Lets the user drag the window by what is not a control.
    void setMovableByBackground(bool movable) { isMovableByBackground_ = movable; }

protected:
    void showEvent(QShowEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    QScrollArea *scrollArea_;
    std::function<void()> closeHandler_;
    bool isMovableByBackground_ = false;
};

}  // namespace kestrelbay
