#include "platform/linux/glib/LoopReader.h"

#include <utility>

namespace kestrelbay {

namespace {

constexpr gint64 kNever = -1;

}  // namespace

struct LoopReader::Source {
    GSource base;
    LoopReader *reader;

    static GSourceFuncs *functions() {
        static GSourceFuncs table{
            .prepare = nullptr,
            .check = nullptr,
            .dispatch = [](GSource *source, GSourceFunc, gpointer) -> gboolean {
                reinterpret_cast<Source *>(source)->reader->dispatch();
                return G_SOURCE_CONTINUE;
            },
            .finalize = nullptr,
            .closure_callback = nullptr,
            .closure_marshal = nullptr};
        return &table;
    }
};

LoopReader::LoopReader(BackgroundLoop &loop, int descriptor, std::function<void()> readable)
    : readable_(std::move(readable)),
      source_(g_source_new(Source::functions(), sizeof(Source))),
      watch_(g_source_add_unix_fd(source_.get(), descriptor, G_IO_IN)) {
    reinterpret_cast<Source *>(source_.get())->reader = this;
    loop.attach(source_.get());
}

LoopReader::~LoopReader() {
    g_source_destroy(source_.get());
}

void LoopReader::pause(std::chrono::milliseconds time) {
    g_source_modify_unix_fd(source_.get(), watch_, GIOCondition(0));
    g_source_set_ready_time(source_.get(),
                            g_get_monotonic_time() + std::chrono::microseconds(time).count());
}

void LoopReader::stop() {
    g_source_destroy(source_.get());
}

void LoopReader::dispatch() {
    if (g_source_get_ready_time(source_.get()) == kNever) {
        readable_();
        return;
    }
    g_source_set_ready_time(source_.get(), kNever);
    g_source_modify_unix_fd(source_.get(), watch_, G_IO_IN);
}

}  // namespace kestrelbay
