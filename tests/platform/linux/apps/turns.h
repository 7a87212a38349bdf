#pragma once

#include <atomic>
#include <thread>

#include <QString>

namespace kestrelbay::testing {

/// Stands between a client and an X server and counts how often the client speaks
/// after it was answered: that is, its round trips.
class TurnCounter {
public:
    explicit TurnCounter(const QString &serverName);
    ~TurnCounter();
    TurnCounter(const TurnCounter &) = delete;
    TurnCounter &operator=(const TurnCounter &) = delete;

    /// The display to connect to instead; serves one client and refuses others.
    [[nodiscard]] const QString &displayName() const { return displayName_; }
    [[nodiscard]] int turns() const { return turns_; }

private:
    void forward();

    QString displayName_;
    QString socketPath_;
    int listener_ = -1;
    int server_ = -1;
    std::atomic<int> turns_{0};
    std::atomic<bool> stop_{false};
    std::thread thread_;
};

}  // namespace kestrelbay::testing
