#pragma once

#include <functional>

namespace kestrelbay {

/// Where work is put off to. Any thread may hand work in; async() never waits
/// for it.
class DispatchQueue {
public:
    virtual ~DispatchQueue() = default;
    virtual void async(std::function<void()> work) = 0;
};

}  // namespace kestrelbay
