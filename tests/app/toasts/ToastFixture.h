#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>

#include <chrono>

#include "app/toasts/LaunchToastWindow.h"
#include "app/toasts/ToastWindow.h"
#include "fakes/FakeNativeWindow.h"
#include "fakes/FakeTimers.h"
#include "fakes/ManualDispatchQueue.h"
#include "fixtures/QtPrinters.h"

namespace kestrelbay {

using std::chrono_literals::operator""ms;

/// Toasts on a screen that is not shown, in a time that only the test moves.
template <class Toast>
class ToastFixture : public ::testing::Test {
protected:
    ToastFixture() { ToastPanel::setServices(&services_); }
    ~ToastFixture() override { ToastPanel::setServices(nullptr); }

    /// Those on screen.
    [[nodiscard]] static QList<Toast *> shown() {
        QList<Toast *> all;
        for (QWidget *widget : QApplication::topLevelWidgets()) {
            if (auto *toast = qobject_cast<Toast *>(widget); toast && toast->isVisible())
                all.append(toast);
        }
        return all;
    }
    /// The only one on screen; null when there is none.
    [[nodiscard]] static Toast *current() {
        const QList<Toast *> all = shown();
        EXPECT_LE(all.size(), 1);
        return all.value(0);
    }

    FakeNativeWindow nativeWindow_;
    FakeTimers timers_;
    ManualDispatchQueue mainQueue_;
    ToastPanel::Services services_{nativeWindow_, timers_, mainQueue_};
};

}  // namespace kestrelbay
