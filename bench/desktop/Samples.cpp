#include "Samples.h"

#include <algorithm>
#include <cmath>

namespace kestrelbay::bench {

double Samples::percentile(double percent) const {
    if (values_.empty())
        return 0;
    std::vector<double> sorted = values_;
    std::ranges::sort(sorted);
    const double rank = std::ceil(percent / 100 * static_cast<double>(sorted.size()));
    return sorted[static_cast<std::size_t>(std::max(rank, 1.0)) - 1];
}

std::vector<Samples> byTurns(
    std::size_t contenders, int trials,
    const std::function<std::optional<double>(std::size_t contender)> &trial) {
    constexpr int kWarmUps = 5;
    std::vector<Samples> samples(contenders);
    for (int round = -kWarmUps; round < trials; ++round) {
        for (std::size_t i = 0; i < contenders; ++i) {
            const std::size_t turn = (i + static_cast<std::size_t>(round + kWarmUps)) % contenders;
            const std::optional<double> time = trial(turn);
            if (round < 0)
                continue;
            if (time)
                samples[turn].add(*time);
            else
                samples[turn].addLost();
        }
    }
    return samples;
}

}  // namespace kestrelbay::bench
