#pragma once

#include <functional>

#include <gio/gio.h>

namespace kestrelbay::bench {

/// The session bus of a program that waits for nothing but one kind of signal. The program ends
/// with the bus.
class LimitBus {
public:
    using Heard = std::function<void(const LimitBus &bus)>;

    /// The signal's name, and what is called on the thread that has read it.
    LimitBus(const char *signal, Heard heard);
    LimitBus(const LimitBus &) = delete;
    LimitBus &operator=(const LimitBus &) = delete;
    ~LimitBus() = default;

    /// Has the bus pass the signals of this object on. False when it does not answer.
    [[nodiscard]] bool listen(const char *path) const;
    /// Waits for the answer: false when there is none but an error.
    [[nodiscard]] bool call(const char *service, const char *path, const char *interface,
                            const char *member, GVariant *arguments) const;
    /// Without an answer.
    void tell(const char *service, const char *path, const char *interface,
              const char *member) const;
    /// Waits for signals.
    [[noreturn]] static void wait();

private:
    static GDBusMessage *filter(GDBusConnection *bus, GDBusMessage *message, gboolean isIncoming,
                                gpointer self);

    const char *const signal_;
    const Heard heard_;
    /// Null when there is no bus.
    GDBusConnection *const bus_ = g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr);
};

}  // namespace kestrelbay::bench
