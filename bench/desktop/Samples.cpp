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

}  // namespace kestrelbay::bench
