#include "platform/linux/glib/MainLoopSleep.h"

#include <atomic>
#include <utility>
#include <vector>

#include <glib.h>

namespace kestrelbay {

/// Stands in for the poll of the default main context, which is the main thread's.
struct MainLoopPoll {
    static gint poll(GPollFD *sources, guint count, gint timeout) {
        if (timeout == 0)
            return instance().poll_(sources, count, timeout);
        instance().isAsleep_ = true;
        const gint result = instance().poll_(sources, count, timeout);
        instance().isAsleep_ = false;
        for (const MainLoopSleep *listener : instance().listeners_)
            listener->woke_();
        return result;
    }

    static MainLoopPoll &instance() {
        static MainLoopPoll theOne;
        return theOne;
    }

    MainLoopPoll() { g_main_context_set_poll_func(nullptr, &poll); }

    const GPollFunc poll_ = g_main_context_get_poll_func(nullptr);
    std::atomic<bool> isAsleep_ = false;
    std::vector<const MainLoopSleep *> listeners_;
};

MainLoopSleep::MainLoopSleep(std::function<void()> woke) : woke_(std::move(woke)) {
    MainLoopPoll::instance().listeners_.push_back(this);
}

MainLoopSleep::~MainLoopSleep() {
    std::erase(MainLoopPoll::instance().listeners_, this);
}

bool MainLoopSleep::isAsleep() {
    return MainLoopPoll::instance().isAsleep_;
}

}  // namespace kestrelbay
