#include "platform/linux/glib/BackgroundLoop.h"

#include <utility>

namespace kestrelbay {

BackgroundLoop::BackgroundLoop()
    : context_(g_main_context_new()), loop_(g_main_loop_new(context_.get(), FALSE)) {
    thread_ = std::thread([this] {
        g_main_context_push_thread_default(context_.get());
        g_main_loop_run(loop_.get());
        g_main_context_pop_thread_default(context_.get());
    });
}

BackgroundLoop::~BackgroundLoop() {
    // Posted, since quitting a loop that does not run yet would be forgotten.
    post([this] { g_main_loop_quit(loop_.get()); });
    thread_.join();
}

void BackgroundLoop::post(Work work) {
    {
        const std::lock_guard lock(mutex_);
        waiting_.push_back(std::move(work));
    }
    const GSourcePtr source(g_idle_source_new());
    g_source_set_priority(source.get(), G_PRIORITY_DEFAULT);
    g_source_set_callback(
        source.get(),
        [](gpointer self) -> gboolean {
            static_cast<BackgroundLoop *>(self)->runNext();
            return G_SOURCE_REMOVE;
        },
        this, nullptr);
    g_source_attach(source.get(), context_.get());
}

void BackgroundLoop::runNext() {
    Work work;
    {
        const std::lock_guard lock(mutex_);
        work = std::move(waiting_.front());
        waiting_.pop_front();
    }
    work();
}

void BackgroundLoop::postAfter(unsigned milliseconds, Work work) {
    const GSourcePtr source(g_timeout_source_new(milliseconds));
    g_source_set_callback(
        source.get(),
        [](gpointer data) -> gboolean {
            (*static_cast<Work *>(data))();
            return G_SOURCE_REMOVE;
        },
        std::make_unique<Work>(std::move(work)).release(),
        [](gpointer data) { delete static_cast<Work *>(data); });
    g_source_attach(source.get(), context_.get());
}

}  // namespace kestrelbay
