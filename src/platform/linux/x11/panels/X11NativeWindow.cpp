#include "platform/linux/x11/panels/X11NativeWindow.h"

#include <array>
#include <chrono>
#include <cmath>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <QGuiApplication>
#include <QRegion>
#include <QWindow>

#include <xcb/shape.h>

namespace kestrelbay::x11 {

namespace {

/// One that is drawing, as mutter does, may take more than 50 ms to answer.
constexpr std::chrono::milliseconds kLongestWaitForFrame{250};
/// Left, right, top and bottom.
constexpr std::size_t kExtents = 4;

/// Has the server work off what Qt has asked of it: the window may be one that Qt
/// has only just asked for, over another connection.
void finishRequestsOfQt() {
    const auto *const gui = qobject_cast<QGuiApplication *>(QCoreApplication::instance());
    // Qt's platform without a screen has the interface too, but nothing behind it.
    const auto *const x11 = gui && QGuiApplication::platformName() == QLatin1String("xcb")
                                ? gui->nativeInterface<QNativeInterface::QX11Application>()
                                : nullptr;
    if (x11 != nullptr)
        synchronize(x11->connection());
}

qreal devicePixelRatioOf(NativeWindow::Id id) {
    for (const QWindow *const window : QGuiApplication::allWindows())
        if (window->handle() != nullptr && window->winId() == id)
            return window->devicePixelRatio();
    return 1;
}

/// The device pixels whose centres lie within the rounded rectangle.
QRegion roundedRegion(const QRect &rectangle, int cornerRadius, qreal ratio) {
    const QRect area(rectangle.topLeft() * ratio, rectangle.size() * ratio);
    const int radius = qRound(cornerRadius * ratio);
    QRegion region(area.adjusted(0, radius, 0, -radius));
    for (int y = 0; y < radius; ++y) {
        const double rise = radius - y - 0.5;
        const int inset = static_cast<int>(
            std::lround(radius - std::sqrt(double(radius) * radius - rise * rise)));
        const int width = area.width() - 2 * inset;
        region += QRect(area.left() + inset, area.top() + y, width, 1);
        region += QRect(area.left() + inset, area.bottom() - y, width, 1);
    }
    return region;
}

xcb_window_t xWindow(NativeWindow::Id window) {
    return static_cast<xcb_window_t>(window);
}

}  // namespace

/// Brings one window at a time forward, as soon as the window manager has it: a
/// request about a window it does not know yet is lost.
class X11NativeWindow::WindowForward {
public:
    explicit WindowForward(const WindowSystem &system) : system_(system) {}

    void bring(xcb_window_t window) {
        watch(XCB_EVENT_MASK_NO_EVENT);
        window_ = window;
        end_ = std::chrono::steady_clock::now() + kLongestWait;
        watch(XCB_EVENT_MASK_PROPERTY_CHANGE);
        system_.askTime();
        system_.flush();
    }

    /// Of the connection of the window system.
    void handle(const xcb_generic_event_t &event) {
        if (window_ == XCB_NONE || (event.response_type & 0x7fU) != XCB_PROPERTY_NOTIFY)
            return;
        const auto &change = reinterpret_cast<const xcb_property_notify_event_t &>(event);
        const bool isClock = change.window == system_.clockWindow();
        const bool isState = change.window == window_ && change.atom == system_.atoms()["WM_STATE"];
        if (std::chrono::steady_clock::now() > end_) {
            watch(XCB_EVENT_MASK_NO_EVENT);
            window_ = XCB_NONE;
        } else if (isClock || isState) {
            // A window that is minimised later on was minimised by the user.
            activate(change.time, isClock);
        }
    }

private:
    /// From then on the user may have gone elsewhere. Window managers take in a new
    /// window within a fraction of this.
    static constexpr std::chrono::seconds kLongestWait{2};

    void activate(xcb_timestamp_t time, bool restores) {
        const WindowAddress address{
            .window = window_, .root = system_.connection().root(), .abilities = {}};
        const WindowState state = system_.readStates(std::array{address}).front();
        if (!state.managed || (state.minimized && !restores))
            return;
        // Some window managers go to the window's workspace by themselves; others refuse
        // to activate what is not in view.
        if (state.otherWorkspace)
            system_.showWorkspace(address, *state.otherWorkspace, time);
        if (state.minimized)
            system_.restore(std::array{address}, time);
        system_.activate(address, time);
    }

    void watch(std::uint32_t events) const {
        if (window_ != XCB_NONE)
            system_.connection().selectEvents(window_, events);
    }

    const WindowSystem &system_;
    xcb_window_t window_ = XCB_NONE;
    std::chrono::steady_clock::time_point end_;
};

X11NativeWindow::X11NativeWindow(const QString &displayName)
    : system_(displayName), panels_(system_), forward_(std::make_unique<WindowForward>(system_)) {
    const XConnection &connection = system_.connection();
    if (!connection.isUsable())
        return;
    const std::string manager = "_NET_WM_CM_S" + std::to_string(connection.defaultScreen());
    compositingManager_ = internAtoms(connection, std::array<std::string_view, 1>{manager})[0];
    notifier_ =
        std::make_unique<QSocketNotifier>(connection.fileDescriptor(), QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                     [this] { drain(); });
}

X11NativeWindow::~X11NativeWindow() = default;

void X11NativeWindow::drain() {
    while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(system_.connection().get())}) {
        panels_.handle(*event);
        forward_->handle(*event);
    }
    // A server that has gone leaves a descriptor that can be read forever.
    notifier_->setEnabled(system_.connection().isUsable());
}

/// Waiting for an answer takes events off the socket, which then stays silent.
void X11NativeWindow::drainLater() const {
    QMetaObject::invokeMethod(
        notifier_.get(), [self = const_cast<X11NativeWindow *>(this)] { self->drain(); },
        Qt::QueuedConnection);
}

void X11NativeWindow::makeFloatingPanel(Id window) {
    if (!system_.connection().isUsable())
        return;
    finishRequestsOfQt();
    panels_.add(xWindow(window));
    drainLater();
}

bool X11NativeWindow::isTranslucencyShown() const {
    if (!system_.connection().isUsable())
        return false;
    const xcb_window_t owner = system_.connection().ownerOf(compositingManager_);
    drainLater();
    return owner != XCB_NONE;
}

void X11NativeWindow::setBehindWindowMaterial(Id window, const QRect &rectangle, int cornerRadius) {
    if (!system_.connection().isUsable())
        return;
    std::vector<std::uint32_t> words;
    for (const QRect &part : roundedRegion(rectangle, cornerRadius, devicePixelRatioOf(window)))
        for (const int number : {part.x(), part.y(), part.width(), part.height()})
            words.push_back(static_cast<std::uint32_t>(number));
    finishRequestsOfQt();
    xcb_change_property(system_.connection().get(), XCB_PROP_MODE_REPLACE, xWindow(window),
                        system_.atoms()["_KDE_NET_WM_BLUR_BEHIND_REGION"], XCB_ATOM_CARDINAL, 32,
                        static_cast<std::uint32_t>(words.size()), words.data());
    system_.flush();
}

void X11NativeWindow::cutToRoundedRectangle(Id window, const QRect &rectangle, int cornerRadius) {
    if (!system_.connection().isUsable())
        return;
    std::vector<xcb_rectangle_t> parts;
    for (const QRect &part : roundedRegion(rectangle, cornerRadius, devicePixelRatioOf(window)))
        parts.push_back({static_cast<std::int16_t>(part.x()), static_cast<std::int16_t>(part.y()),
                         static_cast<std::uint16_t>(part.width()),
                         static_cast<std::uint16_t>(part.height())});
    finishRequestsOfQt();
    xcb_shape_rectangles(system_.connection().get(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING,
                         XCB_CLIP_ORDERING_UNSORTED, xWindow(window), 0, 0,
                         static_cast<std::uint32_t>(parts.size()), parts.data());
    system_.flush();
}

QMargins X11NativeWindow::frameMargins(Id window) const {
    if (!system_.connection().isUsable())
        return {};
    finishRequestsOfQt();
    if (!system_.askFrameExtents(xWindow(window)))
        return {};
    const XConnection &x = system_.connection();
    const auto end = std::chrono::steady_clock::now() + kLongestWaitForFrame;
    QMargins margins;
    do {
        const PropertyReply extents = x.readProperty(
            xWindow(window), system_.atoms()["_NET_FRAME_EXTENTS"], XCB_ATOM_CARDINAL, kExtents);
        if (const auto words = propertyWords(extents); words.size() == kExtents) {
            const auto side = [&words](std::size_t index) {
                return static_cast<int>(words[index]);
            };
            margins = {side(0), side(2), side(1), side(3)};
            break;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    } while (x.isUsable() && std::chrono::steady_clock::now() < end);
    drainLater();
    return margins;
}

void X11NativeWindow::bringProgramForward(Id window) {
    if (!system_.connection().isUsable())
        return;
    finishRequestsOfQt();
    forward_->bring(xWindow(window));
}

std::optional<QPoint> X11NativeWindow::activeWindowCenter() const {
    const XConnection &x = system_.connection();
    if (!x.isUsable())
        return std::nullopt;
    const auto active = propertyWord(
        x.readProperty(x.root(), system_.atoms()["_NET_ACTIVE_WINDOW"], XCB_ATOM_WINDOW, 1));
    drainLater();
    if (active.value_or(XCB_NONE) == XCB_NONE)
        return std::nullopt;
    const auto geometryCookie = xcb_get_geometry(x.get(), *active);
    const auto cornerCookie = xcb_translate_coordinates(x.get(), *active, x.root(), 0, 0);
    const Reply<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(x.get(), geometryCookie, nullptr));
    const Reply<xcb_translate_coordinates_reply_t> corner(
        xcb_translate_coordinates_reply(x.get(), cornerCookie, nullptr));
    if (!geometry || !corner)
        return std::nullopt;
    return QPoint(corner->dst_x + geometry->width / 2, corner->dst_y + geometry->height / 2);
}

}  // namespace kestrelbay::x11
