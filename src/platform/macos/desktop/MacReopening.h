#pragma once

#include <functional>

#include "platform/macos/cocoa/ObjCOwner.h"

@class KestrelBayReopenObserver;

namespace kestrelbay {

/// Listens for the user opening the program while it runs: by the Finder, Spotlight or
/// `open`. Has to be made before the application has finished launching. Main thread.
class MacReopening {
public:
    MacReopening();
    ~MacReopening();
    MacReopening(const MacReopening &) = delete;
    MacReopening &operator=(const MacReopening &) = delete;

    void setHandler(std::function<void()> handler);

private:
    ObjCOwner<KestrelBayReopenObserver *> observer_;
};

}  // namespace kestrelbay
