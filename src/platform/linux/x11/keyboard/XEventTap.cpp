#include "platform/linux/x11/keyboard/XEventTap.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <iterator>
#include <string_view>
#include <utility>

#include <xcb/xinput.h>

#include "platform/linux/x11/keyboard/RawKeys.h"
#include "platform/linux/x11/keymap/KeyboardState.h"

namespace kestrelbay::x11 {

namespace {

/// One change of the layout is told of in many events, a script of changes in hundreds, and
/// each reading takes several round trips, in which presses wait.
constexpr std::chrono::milliseconds kKeymapPause{20};

/// After the answer to a press the server is left to the dispatch for so long. Keys repeat from
/// a tenth of a second on at the earliest.
constexpr std::chrono::milliseconds kBeforeRepeats{20};

/// What the keyboard is grabbed for while recording. Not the root window: the
/// server holds back raw events from a client that has grabbed for that one.
xcb_window_t createRecordingWindow(const XConnection &connection) {
    const xcb_window_t window = connection.createInputOnlyWindow();
    const std::uint32_t overrideRedirect = 1;
    xcb_change_window_attributes(connection.get(), window, XCB_CW_OVERRIDE_REDIRECT,
                                 &overrideRedirect);
    xcb_map_window(connection.get(), window);
    return window;
}

}  // namespace

XEventTap::XEventTap(Settings settings)
    : settings_(std::move(settings)),
      grabs_(
          settings_.firstRetry, settings_.longestRetry,
          {.refusalsChanged = [this] { tellRefusals(); }, .serverAsked = [this] { drainLater(); }}),
      unheard_(settings_.displayName) {
    keymapTimer_.setSingleShot(true);
    connect(&keymapTimer_, &QTimer::timeout, this, &XEventTap::readKeymap);
    holdTimer_.setSingleShot(true);
    connect(&holdTimer_, &QTimer::timeout, this, [this] {
        down_->grabSwallowed();
        drainLater();
    });
}

XEventTap::~XEventTap() {
    remove();
}

bool XEventTap::install(Handlers handlers) {
    problem_ = tryInstall(std::move(handlers));
    return problem_ == TapProblem::None;
}

TapProblem XEventTap::tryInstall(Handlers handlers) {
    if (!settings_.isX11Session)
        return TapProblem::WaylandSession;
    auto connection = std::make_shared<XConnection>(settings_.displayName);
    xcb_connection_t *c = connection->get();
    if (!connection->isUsable())
        return TapProblem::NoDisplay;
    if (!hasRawEvents(c))
        return TapProblem::NoInputExtension;
    const std::optional<DisplayClaim> claim = DisplayClaim::take(*connection);
    if (!claim)
        return TapProblem::OtherInstance;
    const std::optional<std::uint8_t> keymapChangeEvent = watchKeymap(c);
    const std::optional<KeyboardModel> keyboard = readKeyboardModel(c);
    const std::optional<xcb_input_device_id_t> device = coreKeyboard(c);
    if (!keymapChangeEvent || !keyboard || !device)
        return connection->isUsable() ? TapProblem::NoInputExtension : TapProblem::NoDisplay;

    connection_ = std::move(connection);
    claim_ = claim;
    handlers_ = std::move(handlers);
    xinputOpcode_ = xcb_get_extension_data(c, &xcb_input_id)->major_opcode;
    managerAtom_ = internAtoms(*connection_, std::array<std::string_view, 1>{"MANAGER"})[0];
    selectRawKeys(*connection_);
    // A new window manager announces itself to those who watch the root's structure.
    for (const xcb_window_t root : connection_->roots())
        connection_->selectEvents(root, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    keymapChangeEvent_ = *keymapChangeEvent;
    recordingWindow_ = createRecordingWindow(*connection_);
    events_.emplace(connection_, *device, WatchedEvents::Settings{settings_.patience, [this] {
                                                                      QMetaObject::invokeMethod(
                                                                          this, &XEventTap::drain,
                                                                          Qt::QueuedConnection);
                                                                  }});
    // By the event loop, which need not be there yet.
    QMetaObject::invokeMethod(this, &XEventTap::listen, Qt::QueuedConnection);
    down_.emplace(*connection_, *device);
    lastRawPress_.reset();
    reconcileWithKeyboard();
    grabs_.start(*connection_, *keyboard);
    return TapProblem::None;
}

void XEventTap::remove() {
    if (connection_ && !recording_)
        replayWaitingKeys();
    notifier_.reset();
    events_.reset();
    keymapTimer_.stop();
    holdTimer_.stop();
    grabs_.stop();
    static_cast<void>(unheard_.forget());
    down_.reset();
    connection_.reset();
    handlers_ = {};
    recording_.reset();
}

/// Gives a key that was pressed but not looked at yet to the program in front.
void XEventTap::replayWaitingKeys() {
    xcb_connection_t *c = connection_->get();
    grabs_.release();
    down_->keepOnly({});
    synchronize(c);
    while (const Reply<xcb_generic_event_t> event = events_->next()) {
        if (const std::optional<KeyPress> press = keyPressOf(*event, xinputOpcode_))
            answer(c, *press, EventVerdict::Pass);
    }
    synchronize(c);
}

void XEventTap::setWantedHotkeys(const std::vector<Hotkey> &hotkeys) {
    unheard_.setWanted(hotkeys);
    grabs_.setWanted(hotkeys);
}

std::vector<RefusedHotkey> XEventTap::refusedHotkeys() const {
    const std::vector<Hotkey> &refused = grabs_.refused();
    std::vector<RefusedHotkey> all;
    std::ranges::transform(refused, std::back_inserter(all),
                           [](const Hotkey &hotkey) { return RefusedHotkey{hotkey}; });
    std::ranges::copy_if(unheard_.refused(), std::back_inserter(all), [&](const auto &unheard) {
        return std::ranges::find(refused, unheard.hotkey) == refused.end();
    });
    return all;
}

void XEventTap::tellRefusals() const {
    if (handlers_.refusalsChanged)
        handlers_.refusalsChanged();
}

/// For where whoever is told may not do everything.
void XEventTap::tellRefusalsLater() {
    QMetaObject::invokeMethod(this, &XEventTap::tellRefusals, Qt::QueuedConnection);
}

bool XEventTap::setRecording(bool recording) {
    if (!connection_)
        return false;
    xcb_connection_t *c = connection_->get();
    drainLater();
    if (!recording) {
        if (recording_) {
            recording_.reset();
            xcb_ungrab_keyboard(c, XCB_CURRENT_TIME);
            xcb_flush(c);
        }
        return true;
    }
    const Reply<xcb_grab_keyboard_reply_t> reply(
        xcb_grab_keyboard_reply(c,
                                xcb_grab_keyboard(c, 0, recordingWindow_, XCB_CURRENT_TIME,
                                                  XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                                nullptr));
    // Qt reads of it only after this.
    recording_.reset();
    if (reply && reply->status == XCB_GRAB_STATUS_SUCCESS)
        recording_.emplace();
    reconcileWithKeyboard();
    return recording_.has_value();
}

void XEventTap::listen() {
    if (!connection_ || notifier_)
        return;
    notifier_.emplace(connection_->fileDescriptor(), QSocketNotifier::Read);
    connect(&*notifier_, &QSocketNotifier::activated, this, &XEventTap::drain);
    drain();
}

void XEventTap::drain() {
    // A handler may remove the tap; the connection then has to live until here.
    const std::shared_ptr<XConnection> connection = connection_;
    const bool isNested = std::exchange(draining_, true);
    while (connection && connection == connection_) {
        const Reply<xcb_generic_event_t> event = events_->next();
        if (!event)
            break;
        handle(*event);
    }
    draining_ = isNested;
    if (!connection || connection != connection_)
        return;
    if (!connection->isUsable()) {
        remove();
        if (settings_.displayLost)
            settings_.displayLost();
    } else if (events_->takeRelease()) {
        deliverRelease();
    }
}

/// Waiting for an answer takes events off the socket, which then stays silent.
void XEventTap::drainLater() {
    if (events_)
        events_->mayHaveMore();
    QMetaObject::invokeMethod(this, &XEventTap::drain, Qt::QueuedConnection);
}

void XEventTap::deliverWaiting() {
    // Inside a handler the rest comes after it.
    if (!draining_)
        drain();
}

/// The watchdog has let go of everything.
void XEventTap::deliverRelease() {
    setRecording(false);
    // What is down was pressed for the program in front, and so are its repeats.
    if (const std::optional<KeySet> down = readDownKeys(connection_->get()))
        down_->passOthers(*down);
    deliver(EventType::TapDisabledByTimeout, {});
}

void XEventTap::enable() {
    grabs_.renew();
}

void XEventTap::handle(const xcb_generic_event_t &event) {
    const unsigned type = event.response_type & 0x7fU;
    if (type == keymapChangeEvent_) {
        if (!keymapTimer_.isActive())
            keymapTimer_.start(kKeymapPause);
    } else if (claim_->isLostBy(event)) {
        const auto lost = handlers_.lost;
        remove();
        problem_ = TapProblem::OtherInstance;
        if (lost)
            lost();
    } else if (const std::optional<KeyPress> press = keyPressOf(event, xinputOpcode_)) {
        handleKeyPress(*press);
    } else if (type == XCB_CLIENT_MESSAGE) {
        if (reinterpret_cast<const xcb_client_message_event_t &>(event).type == managerAtom_) {
            if (unheard_.forget())
                tellRefusalsLater();
            grabs_.retry();
        }
    } else if (type == XCB_GE_GENERIC) {
        handleInput(reinterpret_cast<const xcb_ge_generic_event_t &>(event));
    }
}

/// Presses that wait are answered by the model in force.
void XEventTap::readKeymap() {
    drain();
    if (!connection_)
        return;
    if (const std::optional<KeyboardModel> keyboard = readKeyboardModel(connection_->get()))
        grabs_.setKeyboard(*keyboard);
}

void XEventTap::handleInput(const xcb_ge_generic_event_t &event) {
    if (event.extension != xinputOpcode_)
        return;
    if (event.event_type == XCB_INPUT_RAW_KEY_PRESS ||
        event.event_type == XCB_INPUT_RAW_KEY_RELEASE) {
        const auto &raw = reinterpret_cast<const xcb_input_raw_key_press_event_t &>(event);
        handleRawKey(static_cast<XKeycode>(raw.detail),
                     event.event_type == XCB_INPUT_RAW_KEY_PRESS);
    } else if (event.event_type == XCB_INPUT_HIERARCHY) {
        // Devices come back after a suspend or a switch of virtual terminals; keys let
        // go in between were never reported.
        reconcileWithKeyboard();
    }
}

void XEventTap::handleRawKey(XKeycode keycode, bool pressed) {
    // A key that repeats has no raw events, so one says that the next press of this
    // key is a new one.
    down_->remove(keycode);
    lastRawPress_ = pressed ? std::optional(keycode) : std::nullopt;
    if (!recording_ && unheard_.noteRawKey(keycode, pressed, delivered_, grabs_.keyboard()))
        tellRefusalsLater();
    const std::optional<KeyCode> code = toKeyCode(keycode);
    if (code && isModifierKeyCode(*code))
        deliverModifier(*code, pressed);
    if (code && pressed && !recording_)
        grabs_.keyWentDown(*code, buildDetailedFlags(delivered_));
}

void XEventTap::handleKeyPress(const KeyPress &press) {
    const std::shared_ptr<XConnection> connection = connection_;
    const bool wasRecording = recording_.has_value();
    if (unheard_.noteKeyPress(press.key.keycode))
        tellRefusalsLater();
    const std::optional<EventVerdict> earlier = down_->verdictOn(press.key.keycode);
    const EventVerdict verdict = earlier ? *earlier : decide(press.key);
    // A grab of the whole keyboard lets it go on by itself.
    if (!wasRecording && !recording_)
        answer(connection->get(), press, verdict);
    if (connection != connection_)
        synchronize(connection->get());
    else if (!earlier) {
        down_->add(press.key.keycode, verdict);
        if (verdict == EventVerdict::Swallow && !holdTimer_.isActive())
            holdTimer_.start(kBeforeRepeats);
    }
}

EventVerdict XEventTap::decide(const KeyGrab &press) {
    const std::optional<KeyCode> code = toKeyCode(press.keycode);
    if (!code || isModifierKeyCode(*code) || (!recording_ && !grabs_.cover(press)))
        return EventVerdict::Pass;
    // Raw events run ahead of a press that waited in a frozen keyboard, and some are missed.
    // With the keyboard frozen at this press, the server's key state is that of the press.
    // While recording nothing is frozen, and the state would be a later one.
    const bool isCurrent = lastRawPress_ == press.keycode &&
                           areExplained(press.modifiers, delivered_, grabs_.keyboard());
    if (!recording_ && !isCurrent)
        reconcileWithKeyboard();
    const std::set<KeyCode> unheld =
        unheldModifiers(press.modifiers, delivered_, grabs_.keyboard());
    for (const KeyCode modifier : unheld)
        deliverModifier(modifier, true);
    const EventVerdict verdict = deliver(EventType::KeyDown, *code);
    for (const KeyCode modifier : unheld) {
        if (!connection_)
            return verdict;  // the handler has removed the tap, and will hear of it later
        deliverModifier(modifier, false);
    }
    return verdict;
}

EventVerdict XEventTap::deliver(EventType type, KeyCode keyCode) {
    if (!handlers_.event)
        return EventVerdict::Pass;
    // The handler may remove the tap, and with it the handlers.
    const auto handler = handlers_.event;
    return handler(type, keyCode, buildDetailedFlags(delivered_));
}

void XEventTap::deliverModifier(KeyCode keyCode, bool down) {
    const bool changed = down ? delivered_.insert(keyCode).second : delivered_.erase(keyCode) != 0;
    if (changed)
        deliver(EventType::FlagsChanged, keyCode);
}

/// Makes up for what was not reported.
void XEventTap::reconcileWithKeyboard() {
    const std::optional<KeySet> down = readDownKeys(connection_->get());
    drainLater();
    if (!down)
        return;
    down_->keepOnly(*down);
    for (const KeyCode code : kModifierKeyCodes) {
        if (!connection_)
            return;  // the handler has removed the tap
        deliverModifier(code, contains(*down, code));
    }
}

}  // namespace kestrelbay::x11
