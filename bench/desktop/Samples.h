#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

namespace kestrelbay::bench {

/// Measured times, in milliseconds.
class Samples {
public:
    void add(double value) { values_.push_back(value); }
    void addLost() { ++lost_; }
    /// Of those that never came to an end, which no percentile knows of.
    [[nodiscard]] int lost() const { return lost_; }
    [[nodiscard]] std::size_t count() const { return values_.size(); }
    /// The smallest value that so many percent of all do not exceed; 0 of none.
    [[nodiscard]] double percentile(double percent) const;
    [[nodiscard]] double median() const { return percentile(50); }

private:
    std::vector<double> values_;
    int lost_ = 0;
};

/// So many trials of each of the contenders, by turns, after a few that do not count. A trial takes
/// the contender's number and gives milliseconds, or no value when it never came to an end.
[[nodiscard]] std::vector<Samples> byTurns(
    std::size_t contenders, int trials,
    const std::function<std::optional<double>(std::size_t contender)> &trial);

}  // namespace kestrelbay::bench
