#include "platform/linux/wayland/plasma/KGlobalAccelEventTap.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <utility>

#include <QCoreApplication>
#include <QKeySequence>

#include "platform/linux/wayland/plasma/KeyNumbers.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::plasma {

namespace {

/// For a shell that has the names of actions as $keys and the component as $1. Keys may be blocked
/// just then.
constexpr const char *kUnbindAtEnd = R"(
tell() {
    dbus-send --session --type=method_call --dest=org.kde.kglobalaccel /kglobalaccel \
        org.kde.KGlobalAccel."$@"
}
for key in $keys; do tell unregister string:"$1" string:"$key"; done
tell blockGlobalShortcuts boolean:false
)";

/// One word, the same for one hotkey in every layout.
QString actionOf(const Hotkey &hotkey) {
    return u"hotkey-%1-%2"_s.arg(toNumber(hotkey.keyCode))
        .arg((hotkey.modifierFlags & modifier::kGenericMask).bits(), 0, 16);
}

}  // namespace

KGlobalAccelEventTap::Session::Session(KGlobalAccelEventTap &tap, wayland::HotkeysClaim own)
    : claim(std::move(own)),
      service({.pressed = [&tap](const QString &action) { tap.handlePress(action); },
               .released = [this](const QString &action) { held.erase(action); },
               .changed = [&tap](const QString &action) { tap.check(action); },
               .anotherChanged = [&tap] { tap.retrySoon(); },
               .restarted = [&tap] { tap.bindAnew(); }}),
      keymap(tap.settings_.keymap([&tap] { tap.updateBindings(); })),
      layout(service.bus(), [&tap] { tap.updateBindings(); }),
      guard(kUnbindAtEnd, KGlobalAccelService::kComponent, claim.descriptor()),
      nextRetry(tap.settings_.firstRetry) {
    retryTimer.setSingleShot(true);
    QObject::connect(&retryTimer, &QTimer::timeout, &retryTimer, [&tap] { tap.retry(); });
}

KGlobalAccelEventTap::KGlobalAccelEventTap(Settings settings) : settings_(std::move(settings)) {}

KGlobalAccelEventTap::~KGlobalAccelEventTap() {
    remove();
}

bool KGlobalAccelEventTap::install(Handlers handlers) {
    problem_ = tryInstall();
    if (problem_ != TapProblem::None) {
        session_.reset();
        return false;
    }
    handlers_ = std::move(handlers);
    session_->service.unbindAllBut(
        [this](const QString &action) { return session_->bound.contains(action); });
    updateBindings();
    return true;
}

TapProblem KGlobalAccelEventTap::tryInstall() {
    std::optional<wayland::HotkeysClaim> claim = wayland::HotkeysClaim::take(settings_.claimPath);
    if (!claim)
        return TapProblem::OtherInstance;
    session_ = std::make_unique<Session>(*this, *std::move(claim));
    return session_->service.isThere() ? TapProblem::None : TapProblem::WaylandSession;
}

void KGlobalAccelEventTap::remove() {
    if (!session_)
        return;
    setRecording(false);
    for (const auto &[action, binding] : session_->bound)
        session_->service.unbind(action);
    session_->service.finish();
    session_.reset();
    handlers_ = {};
}

void KGlobalAccelEventTap::setWantedHotkeys(const std::vector<Hotkey> &hotkeys) {
    wanted_ = hotkeys;
    updateBindings();
}

KGlobalAccelEventTap::Bindings KGlobalAccelEventTap::wantedBindings() const {
    Bindings bindings;
    xkb_keymap *const keymap = session_->keymap->get();
    if (keymap == nullptr)
        return bindings;
    for (const Hotkey &hotkey : wanted_) {
        std::vector<int> keys = keyNumbersOf(hotkey, *keymap, session_->layout.get());
        if (!keys.empty())
            bindings.insert_or_assign(actionOf(hotkey),
                                      Binding{.hotkey = hotkey, .keys = std::move(keys)});
    }
    return bindings;
}

void KGlobalAccelEventTap::updateBindings() {
    if (!session_)
        return;
    session_->nextRetry = settings_.firstRetry;
    Bindings next = wantedBindings();
    tellGuard(next);
    std::swap(session_->bound, next);
    // All that change let go of their keys first: one may want what another one has.
    for (const auto &[action, old] : next) {
        const auto now = session_->bound.find(action);
        if (now == session_->bound.end() || now->second.keys != old.keys)
            session_->service.unbind(action);
        else
            now->second.isRefused = old.isRefused;
    }
    for (const auto &[action, binding] : session_->bound) {
        const auto old = next.find(action);
        if (old == next.end() || old->second.keys != binding.keys)
            bind(action);
    }
}

void KGlobalAccelEventTap::tellGuard(const Bindings &next) const {
    QByteArrayList words;
    for (const Bindings &bindings : {std::cref(session_->bound), std::cref(next)}) {
        for (const auto &[action, binding] : bindings)
            words.append(action.toLatin1());
    }
    // No action's name: there is something to be done at the end.
    if (session_->recording.isOn())
        words.append("recording");
    session_->guard.setKeys(words.join(' '));
}

void KGlobalAccelEventTap::bindAnew() {
    session_->bound.clear();
    session_->held.clear();
    updateBindings();
    if (session_->recording.isOn())
        session_->service.setBlocked(true);
}

void KGlobalAccelEventTap::bind(const QString &action) {
    const std::vector<int> &keys = session_->bound.at(action).keys;
    const QString description = QKeySequence(keys.front()).toString();
    session_->service.bind(action, description, keys, settle(action));
}

std::function<void(bool)> KGlobalAccelEventTap::settle(const QString &action) {
    return [this, action, keys = session_->bound.at(action).keys](bool isGranted) {
        // It may be of no interest any more.
        const auto binding = session_->bound.find(action);
        if (binding != session_->bound.end() && binding->second.keys == keys)
            setRefused(action, !isGranted);
    };
}

void KGlobalAccelEventTap::check(const QString &action) {
    const auto binding = session_->bound.find(action);
    if (binding == session_->bound.end())
        return;
    session_->service.askWhether(action, binding->second.keys, settle(action));
}

void KGlobalAccelEventTap::setRefused(const QString &action, bool isRefused) {
    const auto binding = session_->bound.find(action);
    if (binding == session_->bound.end())
        return;
    if (isRefused && !session_->retryTimer.isActive()) {
        session_->retryTimer.start(session_->nextRetry);
        session_->nextRetry = std::min(2 * session_->nextRetry, settings_.longestRetry);
    }
    if (std::exchange(binding->second.isRefused, isRefused) == isRefused)
        return;
    if (const auto handler = handlers_.refusalsChanged)
        handler();
}

void KGlobalAccelEventTap::retry() {
    for (const auto &[action, binding] : session_->bound) {
        if (binding.isRefused)
            bind(action);
    }
}

void KGlobalAccelEventTap::retrySoon() {
    session_->nextRetry = settings_.firstRetry;
    session_->retryTimer.stop();
    retry();
}

void KGlobalAccelEventTap::handlePress(const QString &action) {
    const auto binding = session_->bound.find(action);
    if (binding == session_->bound.end())
        return;
    QElapsedTimer &time = session_->held[action];
    const bool isRepeat = time.isValid() && !time.hasExpired(settings_.longestSilence.count());
    time.start();
    if (isRepeat)
        return;
    // Copies: whoever is called may remove the tap.
    const Hotkey hotkey = binding->second.hotkey;
    if (const auto handler = handlers_.hotkeyPressed)
        handler(hotkey);
}

bool KGlobalAccelEventTap::setRecording(bool recording) {
    if (!session_ || QCoreApplication::instance() == nullptr)
        return false;
    if (session_->recording.set(recording, handlers_.event)) {
        tellGuard({});
        session_->service.setBlocked(recording);
    }
    return true;
}

std::vector<RefusedHotkey> KGlobalAccelEventTap::refusedHotkeys() const {
    std::vector<RefusedHotkey> refused;
    if (!session_)
        return refused;
    for (const auto &[action, binding] : session_->bound) {
        if (binding.isRefused)
            refused.push_back({binding.hotkey});
    }
    return refused;
}

}  // namespace kestrelbay::plasma
