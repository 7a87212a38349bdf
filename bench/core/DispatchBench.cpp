#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdint>
#include <vector>

#include <QTemporaryDir>

#include "AllocationCounter.h"
#include "Goal.h"
#include "RulesBench.h"
#include "fakes/FakeEventTap.h"
#include "fakes/FakeSystemLog.h"
#include "hotkeys/ShortcutManager.h"
#include "model/RuleFile.h"

namespace kestrelbay {

namespace {

constexpr KeyCode kLastKey{127};
constexpr KeyCode kUnusedKey{4000};
constexpr ModifierFlags kLeftCommandFlags = modifier::kCommand | modifier::kLeftCommand;

/// Presses the key, with left Command held, through a manager of these rules.
void pressKey(benchmark::State &state, const std::vector<ShortcutRule> &rules, KeyCode pressed,
              bool fires) {
    const QTemporaryDir folder;
    RuleFile(RuleFile::pathIn(folder.path())).save(rules);

    FakeEventTap tap;
    FakeSystemLog log;
    std::uint64_t fired = 0;
    ShortcutManager manager(
        folder.path(), tap, log,
        {.ruleFired = [&fired](const ShortcutRule &) { ++fired; }, .rulesChanged = {}});
    manager.eventTapCallback(EventType::FlagsChanged, key::kLeftCommand, ModifierFlags());

    const Goal goal(std::chrono::microseconds(1), "1 us, 0 allocations");
    const std::uint64_t allocationsBefore = allocationCount();
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(
            manager.eventTapCallback(EventType::KeyDown, pressed, ModifierFlags()));
    const std::uint64_t allocations = allocationCount() - allocationsBefore;
    goal.judge(state, allocations == 0);

    state.counters["allocations"] = static_cast<double>(allocations);
    if (fired != (fires ? static_cast<std::uint64_t>(state.iterations()) : 0))
        state.SkipWithError("the wrong rules fired");
}

std::vector<ShortcutRule> rulesOf(const benchmark::State &state) {
    return manyRules(static_cast<std::size_t>(state.range(0)));
}

/// Their last one alone is on kLastKey.
void hitLastRule(benchmark::State &state) {
    std::vector<ShortcutRule> rules = rulesOf(state);
    rules.back().keyCode = kLastKey;
    pressKey(state, rules, kLastKey, true);
}

void hitNoRule(benchmark::State &state) {
    pressKey(state, rulesOf(state), kUnusedKey, false);
}

/// All are on one key, with all there is of modifiers, sides, and sides that fit nothing; the
/// last one alone is on the hotkey that is pressed.
void hitLastRuleOfOneKey(benchmark::State &state) {
    std::vector<ShortcutRule> rules = rulesOf(state);
    std::uint64_t flags = 0;
    for (ShortcutRule &rule : rules) {
        constexpr std::uint64_t kMatched = (modifier::kGenericMask | modifier::kSideMask).bits();
        do
            flags = (flags - kMatched) & kMatched;
        while (flags == modifier::kCommand.bits() || flags == kLeftCommandFlags.bits());
        rule.keyCode = kLastKey;
        rule.modifierFlags = ModifierFlags(flags);
    }
    rules.back().modifierFlags = kLeftCommandFlags;
    pressKey(state, rules, kLastKey, true);
}

void hitOneHotkeyOfAllRules(benchmark::State &state) {
    std::vector<ShortcutRule> rules = rulesOf(state);
    for (ShortcutRule &rule : rules) {
        rule.keyCode = kLastKey;
        rule.modifierFlags = kLeftCommandFlags;
    }
    pressKey(state, rules, kLastKey, true);
}

/// As many hotkeys as rules, so that none of the list can be left out.
void hitLastOfAsManyHotkeys(benchmark::State &state) {
    std::vector<ShortcutRule> rules = rulesOf(state);
    std::uint16_t keyCode = 0;
    for (ShortcutRule &rule : rules)
        rule.keyCode = KeyCode{keyCode++};
    pressKey(state, rules, rules.back().keyCode, true);
}

BENCHMARK(hitLastRule)->Arg(10)->Arg(1'000)->Arg(100'000);
BENCHMARK(hitNoRule)->Arg(10)->Arg(1'000)->Arg(100'000);
BENCHMARK(hitLastRuleOfOneKey)->Arg(100'000);
BENCHMARK(hitOneHotkeyOfAllRules)->Arg(100'000);
BENCHMARK(hitLastOfAsManyHotkeys)->Arg(65'000);

}  // namespace

}  // namespace kestrelbay

BENCHMARK_MAIN();
