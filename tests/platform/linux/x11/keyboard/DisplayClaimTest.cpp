#include "platform/linux/x11/keyboard/DisplayClaim.h"

#include <array>
#include <atomic>
#include <barrier>
#include <functional>
#include <thread>

#include <gtest/gtest.h>

#include "support/PrivateXServer.h"

namespace kestrelbay::x11 {
namespace {

using kestrelbay::testing::PrivateXServer;

TEST(DisplayClaim, IsARaceThatOnlyOneWins) {
    const PrivateXServer server;
    // The server drops the last winner's claim when it comes to it, so not every race has
    // a winner.
    constexpr int kWon = 200;
    constexpr int kAtMost = 100 * kWon;
    int won = 0;
    for (int race = 0; won < kWon; ++race) {
        ASSERT_LT(race, kAtMost) << "nobody wins";
        const std::array connections{XConnection(server.displayName()),
                                     XConnection(server.displayName())};
        std::atomic<int> winners = 0;
        std::barrier start(2);
        const auto run = [&](const XConnection &connection) {
            start.arrive_and_wait();
            if (DisplayClaim::take(connection))
                ++winners;
        };
        std::thread other(run, std::cref(connections[1]));
        run(connections[0]);
        other.join();
        ASSERT_LE(winners, 1);
        won += winners;
    }
}

}  // namespace
}  // namespace kestrelbay::x11
