#include "platform/linux/glib/BusListener.h"

#include <utility>

namespace kestrelbay {

namespace {

/// A service that is slower than this is treated like one that is not there.
constexpr int kLongestCallMilliseconds = 5000;

using SharedVariant = std::shared_ptr<GVariant>;

SharedVariant share(GVariant *variant) {
    return variant ? SharedVariant(g_variant_ref(variant), g_variant_unref) : nullptr;
}

}  // namespace

BusListener::BusListener() : stop_(g_cancellable_new()) {
    loop_.post([this] { isConnected_ = bus_.connection() != nullptr; });
}

BusListener::~BusListener() {
    loop_.post([this] {
        g_cancellable_cancel(stop_.get());
        // Each call that is under way ends here, and frees what it holds.
        while (callsUnderWay_ > 0)
            g_main_context_iteration(g_main_context_get_thread_default(), TRUE);
    });
}

struct BusWatch::Remote {
    struct PendingCall {
        BusListener &listener;
        std::shared_ptr<MainThreadInbox> inbox;
        Answer answer;
    };

    Remote(BusListener &listenerOfIt, std::shared_ptr<MainThreadInbox> inboxOfOwner,
           const Service &serviceToWatch, Handlers handlersOfOwner)
        : listener(listenerOfIt),
          inbox(std::move(inboxOfOwner)),
          service(serviceToWatch),
          handlers(std::make_shared<const Handlers>(std::move(handlersOfOwner))) {}

    void start() {
        connection = listener.bus_.connection();
        if (!connection) {
            tellVanished();
            return;
        }
        subscription = g_dbus_connection_signal_subscribe(
            connection.get(), service.name, service.interface, nullptr, service.path, nullptr,
            G_DBUS_SIGNAL_FLAGS_NONE, &Remote::onSignal, this, nullptr);
        nameWatch = g_bus_watch_name_on_connection(
            connection.get(), service.name, G_BUS_NAME_WATCHER_FLAGS_NONE, &Remote::onAppeared,
            &Remote::onVanished, this, nullptr);
    }

    void stop() const {
        if (nameWatch != 0)
            g_bus_unwatch_name(nameWatch);
        if (subscription != 0)
            g_dbus_connection_signal_unsubscribe(connection.get(), subscription);
    }

    void call(const char *name, const char *path, const char *interface, const char *method,
              GVariant *parameters, GDBusCallFlags flags, Answer answer) {
        if (!connection) {
            inbox->post([answer = std::move(answer)] { answer(nullptr); });
            return;
        }
        ++listener.callsUnderWay_;
        auto pending = std::make_unique<PendingCall>(
            PendingCall{.listener = listener, .inbox = inbox, .answer = std::move(answer)});
        g_dbus_connection_call(connection.get(), name, path, interface, method, parameters, nullptr,
                               flags, kLongestCallMilliseconds, listener.stop_.get(),
                               &Remote::onAnswer, pending.release());
    }

    void tellVanished() {
        inbox->post([kept = handlers] { kept->vanished(); });
    }

    static void onAppeared(GDBusConnection *, const char *, const char *, gpointer self) {
        const auto *remote = static_cast<const Remote *>(self);
        remote->inbox->post([kept = remote->handlers] { kept->appeared(); });
    }

    static void onVanished(GDBusConnection *, const char *, gpointer self) {
        static_cast<Remote *>(self)->tellVanished();
    }

    static void onSignal(GDBusConnection *, const char *, const char *, const char *,
                         const char *member, GVariant *parameters, gpointer self) {
        const auto *remote = static_cast<const Remote *>(self);
        remote->inbox->post([kept = remote->handlers, name = QString::fromUtf8(member),
                             values = share(parameters)] { kept->signal(name, values.get()); });
    }

    static void onAnswer(GObject *source, GAsyncResult *result, gpointer data) {
        const std::unique_ptr<PendingCall> pending(static_cast<PendingCall *>(data));
        const GVariantPtr reply(
            g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, nullptr));
        --pending->listener.callsUnderWay_;
        pending->inbox->post([answer = std::move(pending->answer), shared = share(reply.get())] {
            answer(shared.get());
        });
    }

    BusListener &listener;
    const std::shared_ptr<MainThreadInbox> inbox;
    const Service service;
    const std::shared_ptr<const Handlers> handlers;
    GObjectPtr<GDBusConnection> connection;
    guint nameWatch = 0;
    guint subscription = 0;
};

BusWatch::BusWatch(BusListener &listener, std::shared_ptr<MainThreadInbox> inbox,
                   const Service &service, Handlers handlers)
    : listener_(listener),
      remote_(std::make_unique<Remote>(listener, std::move(inbox), service, std::move(handlers))) {
    listener_.loop().post([remote = remote_.get()] { remote->start(); });
}

BusWatch::~BusWatch() {
    listener_.loop().post(
        [remote = std::shared_ptr<Remote>(std::move(remote_))] { remote->stop(); });
}

void BusWatch::call(const char *interface, const char *method, GVariant *parameters,
                    Answer answer) {
    const SharedVariant owned(g_variant_ref_sink(parameters), g_variant_unref);
    listener_.loop().post(
        [remote = remote_.get(), interface, method, owned, answer = std::move(answer)]() mutable {
            remote->call(remote->service.name, remote->service.path, interface, method, owned.get(),
                         G_DBUS_CALL_FLAGS_NO_AUTO_START, std::move(answer));
        });
}

void BusWatch::startService() {
    listener_.loop().post([remote = remote_.get()] {
        remote->call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                     "StartServiceByName", g_variant_new("(su)", remote->service.name, 0U),
                     G_DBUS_CALL_FLAGS_NONE, [](GVariant *) {});
    });
}

}  // namespace kestrelbay
