#include "platform/macos/MacEventTap.h"

#include <algorithm>
#include <limits>
#include <utility>

#include <Carbon/Carbon.h>

namespace kestrelbay {

namespace {

// What the program calls events by are the system's numbers.
static_assert(kCGEventKeyDown == static_cast<CGEventType>(EventType::KeyDown));
static_assert(kCGEventFlagsChanged == static_cast<CGEventType>(EventType::FlagsChanged));
static_assert(kCGEventTapDisabledByTimeout ==
              static_cast<CGEventType>(EventType::TapDisabledByTimeout));
static_assert(kCGEventTapDisabledByUserInput ==
              static_cast<CGEventType>(EventType::TapDisabledByUserInput));
static_assert(kCGKeyboardEventAutorepeat == 8 && kCGKeyboardEventKeycode == 9);

KeyCode keyCodeOf(CGEventRef event) {
    const std::int64_t code = CGEventGetIntegerValueField(event, kCGKeyboardEventKeycode);
    if (code < 0 || code > std::numeric_limits<std::uint16_t>::max())
        qFatal("KestrelBay: a key event with key code %lld", static_cast<long long>(code));
    return KeyCode(static_cast<std::uint16_t>(code));
}

/// The system's flags also tell of keys that are no modifiers here.
ModifierFlags flagsOf(CGEventRef event) {
    return ModifierFlags(CGEventGetFlags(event)) & (modifier::kGenericMask | modifier::kSideMask);
}

}  // namespace

MacEventTap::MacEventTap(std::chrono::milliseconds lookInterval) {
    lookTimer_.setInterval(lookInterval);
    QObject::connect(&lookTimer_, &QTimer::timeout, &lookTimer_, [this] { look(); });
}

MacEventTap::~MacEventTap() {
    remove();
}

bool MacEventTap::install(Handlers handlers) {
    const bool isMade = makeTap();
    problem_ = isMade ? TapProblem::None : TapProblem::NotPermitted;
    if (!isMade)
        return false;
    handlers_ = std::move(handlers);
    areKeysWithheld_ = IsSecureEventInputEnabled();
    // By the event loop, which need not be there yet.
    QMetaObject::invokeMethod(
        &lookTimer_,
        [this] {
            if (tap_)
                lookTimer_.start();
        },
        Qt::QueuedConnection);
    if (!watch_)
        watch_.emplace([this] { look(); });
    return true;
}

bool MacEventTap::makeTap() {
    tap_ = std::make_unique<SessionTap>(&callback, this);
    if (!tap_->isThere())
        tap_.reset();
    return tap_ != nullptr;
}

void MacEventTap::enable() {
    if (!tap_)
        return;
    tap_->enable();
    keepAlive();
}

void MacEventTap::remove() {
    lookTimer_.stop();
    tap_.reset();
    handlers_ = {};
    swallowed_.clear();
    isRecording_ = false;
    areKeysWithheld_ = false;
}

bool MacEventTap::setRecording(bool recording) {
    isRecording_ = recording && tap_;
    return isRecording_ == recording;
}

void MacEventTap::look() {
    keepAlive();
    noteWithheldKeys();
}

void MacEventTap::keepAlive() {
    if (!tap_ || tap_->isEnabled())
        return;
    // First out of the way: while it is in place, keys may wait for it.
    tap_.reset();
    if (makeTap() && tap_->isEnabled())
        return;
    const auto lost = handlers_.lost;  // it may install the tap
    remove();
    problem_ = TapProblem::NotPermitted;
    if (lost)
        lost();
}

void MacEventTap::noteWithheldKeys() {
    if (!tap_)
        return;
    const bool areWithheld = IsSecureEventInputEnabled();
    if (std::exchange(areKeysWithheld_, areWithheld) == areWithheld)
        return;
    const auto changed = handlers_.withheldChanged;  // it may remove the tap
    if (changed)
        changed();
}

CGEventRef MacEventTap::callback(CGEventTapProxy /*proxy*/, CGEventType type, CGEventRef event,
                                 void *userInfo) {
    if (!userInfo)
        return event;
    const EventVerdict verdict = static_cast<MacEventTap *>(userInfo)->handle(type, event);
    return verdict == EventVerdict::Swallow ? nullptr : event;
}

EventVerdict MacEventTap::handle(CGEventType type, CGEventRef event) {
    switch (type) {
        case kCGEventTapDisabledByTimeout:
        case kCGEventTapDisabledByUserInput:
            isRecording_ = false;
            // There is no key in such an event, and the verdict is not asked for.
            static_cast<void>(deliver(EventType(type), {}, {}));
            return EventVerdict::Pass;
        case kCGEventFlagsChanged: {
            const KeyCode keyCode = keyCodeOf(event);
            if (isModifierKeyCode(keyCode) && held_.erase(keyCode) == 0)
                held_.insert(keyCode);
            return deliver(EventType::FlagsChanged, keyCode, flagsOf(event));
        }
        case kCGEventKeyDown:
            return handleKeyDown(event);
        default:
            return EventVerdict::Pass;
    }
}

EventVerdict MacEventTap::handleKeyDown(CGEventRef event) {
    const KeyCode keyCode = keyCodeOf(event);
    // A key repeats for whoever got its press, whatever modifiers have come or gone since.
    if (CGEventGetIntegerValueField(event, kCGKeyboardEventAutorepeat) != 0)
        return swallowed_.contains(keyCode) ? EventVerdict::Swallow : EventVerdict::Pass;
    swallowed_.erase(keyCode);
    if (!isRecording_ && !isWanted(keyCode))
        return EventVerdict::Pass;
    const EventVerdict verdict = deliver(EventType::KeyDown, keyCode, flagsOf(event));
    if (verdict == EventVerdict::Swallow)
        swallowed_.insert(keyCode);
    return verdict;
}

EventVerdict MacEventTap::deliver(EventType type, KeyCode keyCode, ModifierFlags flags) const {
    const auto handler = handlers_.event;  // it may remove the tap
    return handler ? handler(type, keyCode, flags) : EventVerdict::Pass;
}

bool MacEventTap::isWanted(KeyCode keyCode) const {
    const ModifierFlags held = buildDetailedFlags(held_) & modifier::kGenericMask;
    return std::ranges::any_of(wanted_, [&](const Hotkey &hotkey) {
        return hotkey.keyCode == keyCode && (hotkey.modifierFlags & modifier::kGenericMask) == held;
    });
}

}  // namespace kestrelbay
