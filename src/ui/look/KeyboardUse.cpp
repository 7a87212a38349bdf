#include "ui/look/KeyboardUse.h"

#include <algorithm>
#include <array>

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

namespace kestrelbay {

namespace {

bool isModifier(const QKeyEvent &event) {
    constexpr std::array kModifiers{Qt::Key_Shift,   Qt::Key_Control, Qt::Key_Alt,
                                    Qt::Key_Meta,    Qt::Key_AltGr,   Qt::Key_Super_L,
                                    Qt::Key_Super_R, Qt::Key_CapsLock};
    return std::ranges::find(kModifiers, event.key()) != kModifiers.end();
}

void setUsed(QWidget *widget, bool byKeyboard) {
    while (widget) {
        QWidget *const window = widget->window();
        if (window->testAttribute(Qt::WA_KeyboardFocusChange) != byKeyboard) {
            window->setAttribute(Qt::WA_KeyboardFocusChange, byKeyboard);
            // The ring, wherever it is.
            window->update();
        }
        widget = window->parentWidget();
    }
}

}  // namespace

KeyboardUse::KeyboardUse() {
    qApp->installEventFilter(this);
}

bool KeyboardUse::eventFilter(QObject *watched, QEvent *event) {
    if (watched->isWidgetType()) {
        auto *const widget = static_cast<QWidget *>(watched);
        if (event->type() == QEvent::MouseButtonPress)
            setUsed(widget, false);
        else if (event->type() == QEvent::KeyPress && !isModifier(static_cast<QKeyEvent &>(*event)))
            setUsed(widget, true);
    }
    return false;
}

}  // namespace kestrelbay
