#include <benchmark/benchmark.h>

#include <QPixmap>
#include <QScrollBar>

#include <algorithm>
#include <chrono>

#include "core/RulesBench.h"
#include "preferences/rules/ApplicationIconCache.h"
#include "preferences/rules/RuleDeletion.h"
#include "preferences/rules/RulesModel.h"
#include "preferences/rules/RulesViewController.h"
#include "ui/list/RowListView.h"
#include "views/Frame.h"
#include "views/Services.h"

namespace kestrelbay {

namespace {

constexpr std::size_t kRules = 1'000;
constexpr QSize kSize{704, 546};
/// Of the wheel: three lines.
constexpr int kStep = 3 * 28;

using Milliseconds = std::chrono::duration<double, std::milli>;

/// A list on screen, with the icons of all its rules read.
class ShownList {
public:
    ShownList() {
        QPixmap icon(64, 64);
        icon.fill(Qt::darkCyan);
        services_.catalog().setGenericIcon(QIcon(icon));
        view_.resize(kSize);
        view_.show();
        for (const ShortcutRule &rule : rules_)
            benchmark::DoNotOptimize(icons_.icon(rule.appPath));
        paint();
    }

    void paint() {
        services_.finishWork();
        paintFrame(view_);
    }
    [[nodiscard]] RulesModel &model() { return *view_.model(); }
    [[nodiscard]] RowListView &rows() { return *view_.listView(); }

private:
    const std::vector<ShortcutRule> rules_ = manyRules(kRules);
    Services services_{rules_};
    ApplicationIconCache icons_{services_.all()};
    RuleDeletion deletion_{services_.all()};
    RulesViewController view_{services_.all(), icons_, deletion_};
};

void scrollRules(benchmark::State &state) {
    ShownList list;
    QScrollBar &bar = *list.rows().verticalScrollBar();
    int step = kStep;
    Milliseconds worst{0};
    for ([[maybe_unused]] auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        if (bar.value() + step > bar.maximum() || bar.value() + step < 0)
            step = -step;
        bar.setValue(bar.value() + step);
        list.paint();
        worst = std::max<Milliseconds>(worst, std::chrono::steady_clock::now() - start);
    }
    state.counters["worst_ms"] = worst.count();
}

void reloadRules(benchmark::State &state) {
    ShownList list;
    for ([[maybe_unused]] auto _ : state) {
        list.model().reload();
        list.paint();
    }
}

/// From the choice of the tab to its first frame.
void openRules(benchmark::State &state) {
    Services services(manyRules(kRules));
    ApplicationIconCache icons(services.all());
    RuleDeletion deletion(services.all());
    for ([[maybe_unused]] auto _ : state) {
        RulesViewController view(services.all(), icons, deletion);
        view.resize(kSize);
        view.show();
        paintFrame(view);
    }
}

BENCHMARK(scrollRules)->Unit(benchmark::kMillisecond);
BENCHMARK(reloadRules)->Unit(benchmark::kMillisecond);
BENCHMARK(openRules)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace kestrelbay
