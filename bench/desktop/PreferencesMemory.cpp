#include "PreferencesMemory.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>
#include <vector>

#include "TextTable.h"
#include "desktop/display/WindowManagerView.h"
#include "support/Poll.h"

namespace kestrelbay::bench {

using namespace std::chrono_literals;
using testing::waitUntil;

namespace {

constexpr double kGoal = 1.5;

void expect(bool isSo, const char *what) {
    if (!isSo)
        throw std::runtime_error(what);
}

}  // namespace

void measurePreferencesMemory(desktop::Desktop &desktop, Contender &kestrelbay,
                              const QString &program) {
    desktop::WindowManagerView &view = desktop.view();
    TextTable table({QStringLiteral("when"), QStringLiteral("private KiB"),
                     QStringLiteral("of that before"), QStringLiteral("goal")});
    std::optional<qint64> before;
    const auto addRow = [&](const QString &when, const QString &goal) {
        const auto memory = desktop::Processes::privateMemory(kestrelbay.processId());
        expect(memory.value_or(0) > 0, "the memory of the program cannot be read");
        before = before ? before : memory;
        table.add({when, QString::number(*memory),
                   QString::number(double(*memory) / double(*before), 'f', 2), goal});
    };

    kestrelbay.settle(kBeforeRest);
    addRow(QStringLiteral("before"), {});
    const std::vector<xcb_window_t> others = view.stacking();
    desktop.start(program, {QStringLiteral("--action=preferences")});
    expect(waitUntil([&] { return view.stacking().size() == others.size() + 1; }),
           "the preferences did not come up");
    kestrelbay.settle();
    addRow(QStringLiteral("preferences open"), {});
    for (const xcb_window_t window : view.stacking()) {
        if (std::ranges::find(others, window) == others.end())
            view.close(window);
    }
    expect(waitUntil([&] { return view.stacking().size() == others.size(); }),
           "the preferences did not close");
    const auto end = std::chrono::steady_clock::now() + 1min;
    static_cast<void>(waitUntil([&] { return std::chrono::steady_clock::now() > end; }, 61s));
    addRow(QStringLiteral("closed for a minute"), QStringLiteral("≤ ") + QString::number(kGoal));
    table.print(QStringLiteral("Memory after the preferences were open"));
}

}  // namespace kestrelbay::bench
