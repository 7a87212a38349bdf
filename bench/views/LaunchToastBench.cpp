#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>

#include "app/toasts/LaunchToastWindow.h"
#include "fakes/FakeNativeWindow.h"
#include "fakes/FakeTimers.h"
#include "fakes/ManualDispatchQueue.h"
#include "views/Frame.h"

namespace kestrelbay {

namespace {

/// From the order to the first frame, the one before being taken away.
void showLaunchToast(benchmark::State &state) {
    FakeNativeWindow nativeWindow;
    FakeTimers timers;
    ManualDispatchQueue mainQueue;
    const ToastPanel::Services services{nativeWindow, timers, mainQueue};
    ToastPanel::setServices(&services);
    QImage icon(256, 256, QImage::Format_ARGB32_Premultiplied);
    icon.fill(Qt::darkCyan);
    for ([[maybe_unused]] auto _ : state) {
        LaunchToastWindow::show(icon, LaunchToastDuration::Short);
        for (QWidget *window : QApplication::topLevelWidgets()) {
            if (window->isVisible())
                paintFrame(*window);
        }
        // FakeNativeWindow notes every call.
        nativeWindow.takeCalls();
    }
    ToastPanel::setServices(nullptr);
}

BENCHMARK(showLaunchToast)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace kestrelbay
