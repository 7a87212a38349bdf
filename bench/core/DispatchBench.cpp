#include <benchmark/benchmark.h>

#include <QTemporaryDir>

#include "AllocationCounter.h"
#include "RulesBench.h"
#include "fakes/FakeEventTap.h"
#include "fakes/FakeSystemLog.h"
#include "hotkeys/ShortcutManager.h"
#include "model/RuleFile.h"

namespace kestrelbay {

namespace {

constexpr KeyCode kLastKey{127};
constexpr KeyCode kUnusedKey{4000};

/// One key press through a manager whose last rule alone is on kLastKey.
void pressKey(benchmark::State &state, KeyCode pressed) {
    const QTemporaryDir folder;
    std::vector<ShortcutRule> rules = manyRules(static_cast<std::size_t>(state.range(0)));
    rules.back().keyCode = kLastKey;
    RuleFile(folder.filePath(QStringLiteral("rules.json"))).save(rules);

    FakeEventTap tap;
    FakeSystemLog log;
    std::uint64_t fired = 0;
    ShortcutManager manager(
        folder.path(), tap, log,
        {.ruleFired = [&fired](const ShortcutRule &) { ++fired; }, .rulesChanged = {}});
    manager.eventTapCallback(EventType::FlagsChanged, key::kLeftCommand, ModifierFlags());

    const std::uint64_t allocationsBefore = allocationCount();
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(
            manager.eventTapCallback(EventType::KeyDown, pressed, ModifierFlags()));
    const std::uint64_t allocations = allocationCount() - allocationsBefore;

    state.counters["allocations"] = static_cast<double>(allocations);
    const std::uint64_t expected =
        pressed == kLastKey ? static_cast<std::uint64_t>(state.iterations()) : 0;
    if (allocations != 0)
        state.SkipWithError("a key press allocates memory");
    else if (fired != expected)
        state.SkipWithError("the wrong rules fired");
}

void hitLastRule(benchmark::State &state) {
    pressKey(state, kLastKey);
}
void hitNoRule(benchmark::State &state) {
    pressKey(state, kUnusedKey);
}

BENCHMARK(hitLastRule)->Arg(10)->Arg(1'000)->Arg(100'000);
BENCHMARK(hitNoRule)->Arg(10)->Arg(1'000)->Arg(100'000);

}  // namespace

}  // namespace kestrelbay

BENCHMARK_MAIN();
