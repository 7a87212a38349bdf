#include "platform/linux/wayland/plasma/windows/KWinLine.h"

#include <algorithm>
#include <array>
#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <set>
#include <string_view>
#include <utility>

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryFile>

#include "platform/linux/glib/GObjectPtr.h"
#include "platform/linux/wayland/plasma/windows/WindowScript.h"

namespace kestrelbay::plasma {

namespace {

constexpr const char *kKWin = "org.kde.KWin";
constexpr const char *kScriptingInterface = "org.kde.kwin.Scripting";
/// By turns, since a script that is unloaded has its name for a moment longer, in which KWin loads
/// no other one of that name.
constexpr std::array kScriptNames{"kestrelbay-windows", "kestrelbay-windows-2"};

/// GIO's, which hands over what comes on the very thread that reads it. Qt would pass each question
/// and answer on to a thread with an event loop.
GObjectPtr<GDBusConnection> connectToBus() {
    const GCharPtr address(g_dbus_address_get_for_bus_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    if (!address)
        return {};
    constexpr int kFlags = G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                           G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION;
    return GObjectPtr<GDBusConnection>(g_dbus_connection_new_for_address_sync(
        address.get(), static_cast<GDBusConnectionFlags>(kFlags), nullptr, nullptr, nullptr));
}

bool isText(const char *text, std::string_view wanted) {
    return text != nullptr && wanted == text;
}

}  // namespace

/// Outlives the line for as long as GIO may have it.
struct KWinLine::State {
    using Clock = std::chrono::steady_clock;
    using Message = GObjectPtr<GDBusMessage>;

    explicit State(std::chrono::milliseconds silence) : longestSilence(silence) {}

    const std::chrono::milliseconds longestSilence;

    const GObjectPtr<GDBusConnection> connection = connectToBus();

    /// The script, which KWin reads some time after it was told to run it.
    std::optional<QTemporaryFile> file;

    std::mutex mutex;
    std::condition_variable answered;
    /// Held while one is called, which so does not outlive the line.
    std::mutex handlersMutex;
    Handlers handlers;
    /// The script's call, as long as it waits for a question.
    Message waiting;
    std::deque<std::pair<Number, QByteArray>> questions;
    std::set<Number> awaited;
    std::map<Number, QByteArray> answers;
    Number last = 0;
    /// What the script has to do just now; 0 for nothing.
    Number current = 0;
    /// How often KWin was asked to run it.
    std::size_t loads = 0;
    /// Until then the script is at work or waits; later it has been forgotten.
    Clock::time_point good{};

    GVariantPtr call(const char *destination, const char *path, const char *interface,
                     const char *member, GVariant *arguments) const {
        return GVariantPtr(
            g_dbus_connection_call_sync(connection.get(), destination, path, interface, member,
                                        arguments, nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START,
                                        static_cast<int>(kPatience.count()), nullptr, nullptr));
    }
    GVariantPtr callScripting(const char *member, GVariant *arguments) const {
        return call(kKWin, "/Scripting", kScriptingInterface, member, arguments);
    }
    void unload(const char *name) const {
        (void)callScripting("unloadScript", g_variant_new("(s)", name));
    }
    // The same without waiting.
    void tellScripting(const char *member, GVariant *arguments) const {
        g_dbus_connection_call(connection.get(), kKWin, "/Scripting", kScriptingInterface, member,
                               arguments, nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, nullptr,
                               nullptr, nullptr);
    }
    void send(GDBusMessage *message) const {
        g_dbus_connection_send_message(connection.get(), message, G_DBUS_SEND_MESSAGE_FLAGS_NONE,
                                       nullptr, nullptr);
    }

    // With the lock held.
    [[nodiscard]] const char *scriptName() const {
        return kScriptNames.at(loads % kScriptNames.size());
    }
    [[nodiscard]] QByteArray scriptPath() const { return "/" + QByteArray::number(loads); }
    /// In the place of one that runs already.
    void load() {
        if (waiting) {
            // The bus keeps it in mind until it is answered.
            const Message call = std::exchange(waiting, {});
            const Message late(g_dbus_message_new_method_error_literal(
                call.get(), "org.freedesktop.DBus.Error.Timeout", "too late"));
            send(late.get());
        }
        current = 0;
        good = Clock::now() + kPatience;
        const char *const before = scriptName();
        ++loads;
        file.emplace(QDir(QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation))
                         .filePath(QStringLiteral("kestrelbay-XXXXXX.js")));
        if (!connection || !file->open())
            return;
        file->write(
            windowScript(g_dbus_connection_get_unique_name(connection.get()), scriptPath()));
        file->flush();
        const QByteArray path = QFile::encodeName(file->fileName());
        tellScripting("unloadScript", g_variant_new("(s)", before));
        tellScripting("loadScript", g_variant_new("(ss)", path.constData(), scriptName()));
        // Of all that are loaded it runs those that do not run yet. A script cannot be told apart
        // by its number: KWin gives the same one again.
        tellScripting("start", nullptr);
    }
    void replyIfAsked() {
        if (!waiting || questions.empty())
            return;
        const auto [number, question] = std::exchange(questions.front(), {});
        questions.pop_front();
        current = number;
        good = Clock::now() + kPatience;
        const Message call = std::exchange(waiting, {});
        const Message answer(g_dbus_message_new_method_reply(call.get()));
        g_dbus_message_set_body(answer.get(), g_variant_new("(s)", question.constData()));
        send(answer.get());
    }

    // On GIO's thread.
    void takeNext(Message call) {
        GVariant *const body = g_dbus_message_get_body(call.get());
        const char *result = "";
        if (body != nullptr && g_variant_is_of_type(body, G_VARIANT_TYPE("(s)")))
            g_variant_get(body, "(&s)", &result);
        const std::lock_guard lock(mutex);
        if (g_dbus_message_get_path(call.get()) != scriptPath())
            return;
        const Number done = std::exchange(current, 0);
        if (awaited.contains(done))
            answers[done] = result;
        answered.notify_all();
        waiting = std::move(call);
        good = Clock::now() + longestSilence;
        replyIfAsked();
    }
    void takeNews(GDBusMessage *call) {
        // KWin and the bus would wait for it.
        const Message heard(g_dbus_message_new_method_reply(call));
        send(heard.get());
        const std::lock_guard lock(handlersMutex);
        GVariant *const body = g_dbus_message_get_body(call);
        if (!isText(g_dbus_message_get_member(call), "Used")) {
            if (handlers.windowAppeared)
                handlers.windowAppeared();
        } else if (handlers.windowUsed && body != nullptr &&
                   g_variant_is_of_type(body, G_VARIANT_TYPE("(s)"))) {
            const char *name = "";
            g_variant_get(body, "(&s)", &name);
            handlers.windowUsed(QString::fromUtf8(name));
        }
    }
    static GDBusMessage *filter(GDBusConnection * /*connection*/, GDBusMessage *message,
                                gboolean isIncoming, gpointer data) {
        State &self = **static_cast<std::shared_ptr<State> *>(data);
        if (isIncoming == FALSE)
            return message;
        const char *const member = g_dbus_message_get_member(message);
        const char *const interface = g_dbus_message_get_interface(message);
        if (isText(interface, kScriptInterface)) {
            Message call(message);
            if (isText(member, "Next"))
                self.takeNext(std::move(call));
            else
                self.takeNews(call.get());
            return nullptr;
        }
        if (isText(member, "NameOwnerChanged")) {
            const char *owner = "";
            if (GVariant *const body = g_dbus_message_get_body(message);
                body != nullptr && g_variant_is_of_type(body, G_VARIANT_TYPE("(sss)")))
                g_variant_get(body, "(&s&s&s)", nullptr, nullptr, &owner);
            if (*owner != '\0') {
                const std::lock_guard lock(self.mutex);
                self.load();
            }
        }
        return message;
    }
};

KWinLine::KWinLine(std::chrono::milliseconds longestSilence)
    : state_(std::make_shared<State>(longestSilence)) {}

KWinLine::~KWinLine() {
    if (!state_->connection)
        return;
    {
        const std::lock_guard lock(state_->handlersMutex);
        state_->handlers = {};
    }
    std::unique_lock lock(state_->mutex);
    const char *const script = state_->scriptName();
    lock.unlock();
    state_->unload(script);
    g_dbus_connection_close_sync(state_->connection.get(), nullptr, nullptr);
}

bool KWinLine::isKWinThere() const {
    if (!state_->connection)
        return false;
    const GVariantPtr reply =
        state_->call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                     "NameHasOwner", g_variant_new("(s)", kKWin));
    gboolean isThere = FALSE;
    if (reply)
        g_variant_get(reply.get(), "(b)", &isThere);
    return isThere != FALSE;
}

void KWinLine::listen(Handlers handlers) {
    if (!state_->connection)
        return;
    {
        const std::lock_guard lock(state_->handlersMutex);
        state_->handlers = std::move(handlers);
    }
    g_dbus_connection_add_filter(
        state_->connection.get(), &State::filter, new std::shared_ptr<State>(state_),
        [](gpointer data) { delete static_cast<std::shared_ptr<State> *>(data); });
    (void)state_->call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                       "AddMatch",
                       g_variant_new("(s)",
                                     "type='signal',sender='org.freedesktop.DBus',"
                                     "member='NameOwnerChanged',arg0='org.kde.KWin'"));
    if (!isKWinThere())
        return;
    // Of a program that has died.
    for (const char *const script : kScriptNames)
        state_->unload(script);
    const std::lock_guard lock(state_->mutex);
    state_->load();
}

KWinLine::Number KWinLine::send(const QByteArray &question) {
    const std::lock_guard lock(state_->mutex);
    const Number number = ++state_->last;
    state_->awaited.insert(number);
    state_->questions.emplace_back(number, question);
    if (State::Clock::now() > state_->good)
        state_->load();
    state_->replyIfAsked();
    return number;
}

std::optional<QByteArray> KWinLine::await(Number number) {
    State &state = *state_;
    std::unique_lock lock(state.mutex);
    state.answered.wait_for(lock, kPatience, [&] { return state.answers.contains(number); });
    state.awaited.erase(number);
    std::erase_if(state.questions, [number](const auto &asked) { return asked.first == number; });
    auto node = state.answers.extract(number);
    return node.empty() ? std::nullopt : std::optional(std::move(node.mapped()));
}

}  // namespace kestrelbay::plasma
