#include "platform/linux/x11/keyboard/XEventTap.h"

#include <array>
#include <string_view>
#include <utility>

#include <xcb/xinput.h>

#include "platform/linux/x11/keyboard/KeyboardState.h"
#include "platform/linux/x11/keyboard/RawKeys.h"

namespace kestrelbay::x11 {

namespace {

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

/// Makes this client the one event tap of the display by owning a selection. The
/// server gives it up by itself when the connection ends, however that happens.
/// False when another instance of the program has it.
bool claimDisplay(const XConnection &connection) {
    constexpr std::string_view kSelection = "_KESTRELBAY_EVENT_TAP";
    const xcb_atom_t selection = internAtoms(connection, std::array{kSelection})[0];
    if (selection == XCB_ATOM_NONE || connection.ownerOf(selection) != XCB_NONE)
        return false;
    const xcb_window_t window = connection.createInputOnlyWindow();
    xcb_set_selection_owner(connection.get(), window, selection, XCB_CURRENT_TIME);
    return connection.ownerOf(selection) == window;
}

}  // namespace

XEventTap::XEventTap(Settings settings)
    : settings_(std::move(settings)),
      grabs_(settings_.firstRetry, settings_.longestRetry,
             {.refusalsChanged =
                  [this] {
                      if (handlers_.refusalsChanged)
                          handlers_.refusalsChanged();
                  },
              .serverAsked = [this] { drainLater(); }}) {}

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
    if (!claimDisplay(*connection))
        return TapProblem::OtherInstance;
    const std::optional<std::uint8_t> keymapChangeEvent = watchKeymap(c);
    const std::optional<KeyboardModel> keyboard = readKeyboardModel(c);
    if (!keymapChangeEvent || !keyboard)
        return connection->isUsable() ? TapProblem::NoInputExtension : TapProblem::NoDisplay;

    connection_ = std::move(connection);
    handlers_ = std::move(handlers);
    xinputOpcode_ = xcb_get_extension_data(c, &xcb_input_id)->major_opcode;
    managerAtom_ = internAtoms(*connection_, std::array<std::string_view, 1>{"MANAGER"})[0];
    selectRawKeys(*connection_);
    // A new window manager announces itself to those who watch the root's structure.
    for (const xcb_window_t root : connection_->roots())
        connection_->selectEvents(root, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    keymapChangeEvent_ = *keymapChangeEvent;
    recordingWindow_ = createRecordingWindow(*connection_);
    notifier_.emplace(connection_->fileDescriptor(), QSocketNotifier::Read);
    connect(&*notifier_, &QSocketNotifier::activated, this, &XEventTap::drain);
    reconcileModifiers();
    grabs_.start(*connection_, *keyboard);
    return TapProblem::None;
}

void XEventTap::remove() {
    if (connection_ && !recording_)
        replayWaitingKeys();
    notifier_.reset();
    grabs_.stop();
    connection_.reset();
    handlers_ = {};
    down_.clear();
    recording_ = false;
}

/// Gives a key that was pressed but not looked at yet to the program in front.
void XEventTap::replayWaitingKeys() {
    xcb_connection_t *c = connection_->get();
    grabs_.release();
    synchronize(c);
    while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(c)}) {
        if ((event->response_type & 0x7fU) == XCB_KEY_PRESS)
            xcb_allow_events(c, XCB_ALLOW_REPLAY_KEYBOARD, XCB_CURRENT_TIME);
    }
    synchronize(c);
}

void XEventTap::setWantedHotkeys(const std::vector<Hotkey> &hotkeys) {
    grabs_.setWanted(hotkeys);
}

bool XEventTap::setRecording(bool recording) {
    if (!connection_)
        return false;
    xcb_connection_t *c = connection_->get();
    drainLater();
    if (!recording) {
        if (std::exchange(recording_, false)) {
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
    recording_ = reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
    reconcileModifiers();
    return recording_;
}

void XEventTap::drain() {
    // A handler may remove the tap; the connection then has to live until here.
    const std::shared_ptr<XConnection> connection = connection_;
    while (connection && connection == connection_) {
        const Reply<xcb_generic_event_t> event(xcb_poll_for_event(connection->get()));
        if (!event)
            break;
        handle(*event);
    }
    if (connection && connection == connection_ && !connection->isUsable()) {
        remove();
        if (settings_.displayLost)
            settings_.displayLost();
    }
}

/// Waiting for an answer takes events off the socket, which then stays silent.
void XEventTap::drainLater() {
    QMetaObject::invokeMethod(this, &XEventTap::drain, Qt::QueuedConnection);
}

void XEventTap::handle(const xcb_generic_event_t &event) {
    const unsigned type = event.response_type & 0x7fU;
    if (type == keymapChangeEvent_) {
        if (const std::optional<KeyboardModel> keyboard = readKeyboardModel(connection_->get()))
            grabs_.setKeyboard(*keyboard);
        return;
    }
    switch (type) {
        case XCB_KEY_PRESS: {
            const auto &press = reinterpret_cast<const xcb_key_press_event_t &>(event);
            handleKeyPress({press.detail, static_cast<std::uint8_t>(press.state & 0xffU)});
            break;
        }
        case XCB_CLIENT_MESSAGE:
            if (reinterpret_cast<const xcb_client_message_event_t &>(event).type == managerAtom_)
                grabs_.retry();
            break;
        case XCB_GE_GENERIC: {
            const auto &generic = reinterpret_cast<const xcb_ge_generic_event_t &>(event);
            if (generic.extension != xinputOpcode_)
                break;
            if (generic.event_type == XCB_INPUT_RAW_KEY_PRESS ||
                generic.event_type == XCB_INPUT_RAW_KEY_RELEASE) {
                const auto &raw = reinterpret_cast<const xcb_input_raw_key_press_event_t &>(event);
                handleRawKey(static_cast<XKeycode>(raw.detail),
                             generic.event_type == XCB_INPUT_RAW_KEY_PRESS);
            } else if (generic.event_type == XCB_INPUT_HIERARCHY) {
                // Devices come back after a suspend or a switch of virtual terminals;
                // keys let go in between were never reported.
                reconcileModifiers();
            }
            break;
        }
        default:
            break;
    }
}

void XEventTap::handleRawKey(XKeycode keycode, bool pressed) {
    // A key that repeats has no raw events, so one says that the next press of this
    // key is a new one.
    down_.erase(keycode);
    const std::optional<KeyCode> code = toKeyCode(keycode);
    if (code && isModifierKeyCode(*code))
        deliverModifier(*code, pressed);
}

void XEventTap::handleKeyPress(const KeyGrab &press) {
    const std::shared_ptr<XConnection> connection = connection_;
    const bool frozen = !recording_;
    const EventVerdict verdict = decide(press);
    if (!frozen || recording_)
        return;  // the grab of the whole keyboard has thawed it
    xcb_connection_t *c = connection->get();
    if (verdict == EventVerdict::Pass) {
        xcb_allow_events(c, XCB_ALLOW_REPLAY_KEYBOARD, XCB_CURRENT_TIME);
    } else {
        // The press made the passive grab an active one, until the key is let go.
        // Given back now, the keyboard thaws and a launched menu can grab it itself.
        // Thawed first and given back then, it would be ours while the server works
        // off what was typed meanwhile, and hold back the raw events of it.
        xcb_ungrab_keyboard(c, XCB_CURRENT_TIME);
    }
    xcb_flush(c);
    if (connection != connection_)
        synchronize(c);
}

EventVerdict XEventTap::decide(const KeyGrab &press) {
    const std::optional<KeyCode> code = toKeyCode(press.keycode);
    if (!code || isModifierKeyCode(*code))
        return EventVerdict::Pass;
    if (const auto earlier = down_.find(press.keycode); earlier != down_.end())
        return earlier->second;
    // With the keyboard frozen at this press, the server's key state is that of the
    // press. While recording nothing is frozen, and the state would be a later one.
    if (!recording_)
        reconcileModifiers();
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
    if (connection_)
        down_[press.keycode] = verdict;
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

void XEventTap::reconcileModifiers() {
    const std::optional<std::set<KeyCode>> held = readHeldModifiers(connection_->get());
    drainLater();
    if (!held)
        return;
    for (const KeyCode code : kModifierKeyCodes) {
        if (!connection_)
            return;  // the handler has removed the tap
        deliverModifier(code, held->contains(code));
    }
}

}  // namespace kestrelbay::x11
