#include "platform/linux/x11/keyboard/XEventTap.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>

#include <xcb/xinput.h>

#include "platform/linux/x11/keyboard/KeyboardState.h"

namespace kestrelbay::x11 {

namespace {

// Since XInput 2.1 raw events arrive while another client has grabbed the keyboard.
constexpr std::uint16_t kXInputMajor = 2;
constexpr std::uint16_t kXInputMinor = 1;

bool hasRawEvents(xcb_connection_t *connection) {
    const xcb_query_extension_reply_t *extension =
        xcb_get_extension_data(connection, &xcb_input_id);
    if (extension == nullptr || extension->present == 0)
        return false;
    const Reply<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        connection, xcb_input_xi_query_version(connection, kXInputMajor, kXInputMinor), nullptr));
    return version && std::pair(version->major_version, version->minor_version) >=
                          std::pair(kXInputMajor, kXInputMinor);
}

void selectRawKeys(const XConnection &connection) {
    const auto select = [&](xcb_input_device_id_t device, std::uint32_t events) {
        struct {
            xcb_input_event_mask_t header;
            std::uint32_t bits;
        } mask{{device, 1}, events};
        // On one root only: the server sends raw events once for every root asked for.
        xcb_input_xi_select_events(connection.get(), connection.root(), 1, &mask.header);
    };
    select(XCB_INPUT_DEVICE_ALL_MASTER,
           XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE);
    select(XCB_INPUT_DEVICE_ALL, XCB_INPUT_XI_EVENT_MASK_HIERARCHY);
}

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

/// While somebody grabs the keyboard, the X server tells the focused window that it has
/// lost the focus, and afterwards that it has it again. Nothing has moved, but Qt would
/// take it for a change of window: a field that records a hotkey, for which the tap grabs
/// the keyboard, would end at once. This keeps such news from Qt as long as it exists.
class GrabFocusFilter final : public QAbstractNativeEventFilter {
public:
    bool nativeEventFilter(const QByteArray &type, void *message, qintptr *) override {
        if (type != "xcb_generic_event_t")
            return false;
        const unsigned kind =
            static_cast<const xcb_generic_event_t *>(message)->response_type & 0x7fU;
        if (kind != XCB_FOCUS_IN && kind != XCB_FOCUS_OUT)
            return false;
        const std::uint8_t mode = static_cast<const xcb_focus_in_event_t *>(message)->mode;
        return mode == XCB_NOTIFY_MODE_GRAB || mode == XCB_NOTIFY_MODE_UNGRAB;
    }
};

}  // namespace

XEventTap::XEventTap(Settings settings)
    : settings_(std::move(settings)), grabFocusFilter_(std::make_unique<GrabFocusFilter>()) {
    QCoreApplication::instance()->installNativeEventFilter(grabFocusFilter_.get());
    retryTimer_.setSingleShot(true);
    connect(&retryTimer_, &QTimer::timeout, this, [this] {
        const std::vector<Hotkey> before = refused_;
        applyGrabs();
        if (!refused_.empty() && refused_ == before)
            retryTimer_.start(
                std::min(retryTimer_.intervalAsDuration() * 2, settings_.longestRetry));
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
    if (!claimDisplay(*connection))
        return TapProblem::OtherInstance;
    const std::optional<std::uint8_t> keymapChangeEvent = watchKeymap(c);
    const std::optional<KeyboardModel> keyboard = readKeyboardModel(c);
    if (!keymapChangeEvent || !keyboard)
        return connection->isUsable() ? TapProblem::NoInputExtension : TapProblem::NoDisplay;

    connection_ = std::move(connection);
    handlers_ = std::move(handlers);
    keyboard_ = *keyboard;
    xinputOpcode_ = xcb_get_extension_data(c, &xcb_input_id)->major_opcode;
    managerAtom_ = internAtoms(*connection_, std::array<std::string_view, 1>{"MANAGER"})[0];
    selectRawKeys(*connection_);
    // A new window manager announces itself to those who watch the root's structure.
    for (const xcb_window_t root : connection_->roots())
        connection_->selectEvents(root, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    keymapChangeEvent_ = *keymapChangeEvent;
    recordingWindow_ = createRecordingWindow(*connection_);
    grabber_.emplace(*connection_);
    notifier_.emplace(connection_->fileDescriptor(), QSocketNotifier::Read);
    connect(&*notifier_, &QSocketNotifier::activated, this, &XEventTap::drain);
    reconcileModifiers();
    applyGrabs();
    return TapProblem::None;
}

void XEventTap::remove() {
    if (connection_ && !recording_)
        replayWaitingKeys();
    retryTimer_.stop();
    notifier_.reset();
    grabber_.reset();
    connection_.reset();
    handlers_ = {};
    down_.clear();
    refused_.clear();
    recording_ = false;
}

/// Gives a key that was pressed but not looked at yet to the program in front.
void XEventTap::replayWaitingKeys() {
    xcb_connection_t *c = connection_->get();
    grabber_->apply({});
    synchronize(c);
    while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(c)}) {
        if ((event->response_type & 0x7fU) == XCB_KEY_PRESS)
            xcb_allow_events(c, XCB_ALLOW_REPLAY_KEYBOARD, XCB_CURRENT_TIME);
    }
    synchronize(c);
}

void XEventTap::setWantedHotkeys(const std::vector<Hotkey> &hotkeys) {
    wanted_ = hotkeys;
    applyGrabs();
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
        if (const std::optional<KeyboardModel> keyboard = readKeyboardModel(connection_->get())) {
            keyboard_ = *keyboard;
            applyGrabs();
        }
        return;
    }
    switch (type) {
        case XCB_KEY_PRESS:
            handleKeyPress(reinterpret_cast<const xcb_key_press_event_t &>(event).detail);
            break;
        case XCB_CLIENT_MESSAGE:
            if (reinterpret_cast<const xcb_client_message_event_t &>(event).type == managerAtom_ &&
                !refused_.empty())
                applyGrabs();
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

void XEventTap::handleKeyPress(XKeycode keycode) {
    const std::shared_ptr<XConnection> connection = connection_;
    const bool frozen = !recording_;
    const EventVerdict verdict = decide(keycode);
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

EventVerdict XEventTap::decide(XKeycode keycode) {
    const std::optional<KeyCode> code = toKeyCode(keycode);
    if (!code || isModifierKeyCode(*code))
        return EventVerdict::Pass;
    if (const auto earlier = down_.find(keycode); earlier != down_.end())
        return earlier->second;
    // With the keyboard frozen at this press, the server's key state is that of the
    // press. While recording nothing is frozen, and the state would be a later one.
    if (!recording_)
        reconcileModifiers();
    const EventVerdict verdict = deliver(EventType::KeyDown, *code);
    if (connection_)
        down_[keycode] = verdict;
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

void XEventTap::applyGrabs() {
    if (!grabber_)
        return;
    std::map<Hotkey, std::set<KeyGrab>> grabs;
    std::set<KeyGrab> all;
    for (const Hotkey &hotkey : wanted_) {
        const auto &own = grabs.try_emplace(hotkey, grabsFor(hotkey, keyboard_)).first->second;
        all.insert(own.begin(), own.end());
    }
    grabber_->apply(all);
    drainLater();

    std::vector<Hotkey> refused;
    for (const auto &[hotkey, own] : grabs) {
        if (std::ranges::any_of(
                own, [this](const KeyGrab &g) { return grabber_->refused().contains(g); }))
            refused.push_back(hotkey);
    }
    if (refused == refused_)
        return;
    refused_ = std::move(refused);
    if (refused_.empty())
        retryTimer_.stop();
    else
        retryTimer_.start(settings_.firstRetry);
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (handlers_.refusalsChanged)
                handlers_.refusalsChanged();
        },
        Qt::QueuedConnection);
}

}  // namespace kestrelbay::x11
