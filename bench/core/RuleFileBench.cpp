#include <benchmark/benchmark.h>

#include <chrono>

#include <QTemporaryDir>

#include "Goal.h"
#include "RulesBench.h"
#include "model/RuleFile.h"
#include "model/RuleJson.h"

namespace kestrelbay {

namespace {

constexpr std::size_t kRules = 10'000;

void loadRules(benchmark::State &state) {
    const QTemporaryDir folder;
    RuleFile file(folder.filePath(QStringLiteral("rules.json")));
    file.save(manyRules(kRules));
    const Goal goal(std::chrono::milliseconds(30), "30 ms");
    for ([[maybe_unused]] auto _ : state) {
        const RuleFile::LoadResult result = file.load();
        if (result.rules.size() != kRules)
            state.SkipWithError("the rules were not loaded");
    }
    goal.judge(state);
}

void saveRules(benchmark::State &state) {
    const QTemporaryDir folder;
    RuleFile file(folder.filePath(QStringLiteral("rules.json")));
    const std::vector<ShortcutRule> rules = manyRules(kRules);
    const Goal goal(std::chrono::milliseconds(20), "20 ms");
    for ([[maybe_unused]] auto _ : state) {
        if (!file.save(rules))
            state.SkipWithError("the rules were not saved");
    }
    goal.judge(state);
}

/// What saving costs without the disk.
void encode(benchmark::State &state) {
    const std::vector<ShortcutRule> rules = manyRules(kRules);
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(encodeRules(rules));
}

BENCHMARK(loadRules)->Unit(benchmark::kMillisecond);
BENCHMARK(saveRules)->Unit(benchmark::kMillisecond);
BENCHMARK(encode)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace kestrelbay
