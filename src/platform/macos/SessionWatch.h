#pragma once

#include <functional>
#include <memory>

namespace kestrelbay {

/// Tells when the user is back: the machine or its screens woke, or the session is in front
/// again after another user's. Main thread.
class SessionWatch {
public:
    explicit SessionWatch(std::function<void()> userIsBack);
    ~SessionWatch();
    SessionWatch(const SessionWatch &) = delete;
    SessionWatch &operator=(const SessionWatch &) = delete;

private:
    struct Observer;
    const std::unique_ptr<Observer> observer_;
};

}  // namespace kestrelbay
