#include "desktop/display/ToastWatch.h"

#include <algorithm>

namespace kestrelbay::desktop {

namespace {

constexpr int kLaunchToastSide = 192;
constexpr int kMessageToastWidth = 420;
constexpr const char *kOpacity = "_NET_WM_WINDOW_OPACITY";
constexpr std::uint32_t kOpaque = 0xFFFFFFFF;

}  // namespace

ToastWatch::ToastWatch(const QString &displayName) : client_(displayName) {
    const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(client_.get(), client_.root(), XCB_CW_EVENT_MASK, &mask);
    client_.sync();
}

const std::vector<ToastWatch::Toast> &ToastWatch::launchToasts() {
    readEvents();
    return launchToasts_;
}

const std::vector<ToastWatch::Toast> &ToastWatch::messageToasts() {
    readEvents();
    return messageToasts_;
}

void ToastWatch::forget() {
    readEvents();
    launchToasts_.clear();
    messageToasts_.clear();
}

bool ToastWatch::isToast(const QSize &size) const {
    return isLaunchToast(size) || isMessageToast(size);
}

bool ToastWatch::isLaunchToast(const QSize &size) const {
    return size == QSize(kLaunchToastSide, kLaunchToastSide) * scale_;
}

bool ToastWatch::isMessageToast(const QSize &size) const {
    return size.width() == qRound(kMessageToastWidth * scale_);
}

void ToastWatch::readEvents() {
    while (const Reply<xcb_generic_event_t> event{xcb_poll_for_event(client_.get())}) {
        const auto type = event->response_type & 0x7fU;
        if (type == XCB_CREATE_NOTIFY) {
            const auto &created = reinterpret_cast<const xcb_create_notify_event_t &>(*event);
            const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
            if (created.override_redirect != 0)
                xcb_change_window_attributes(client_.get(), created.window, XCB_CW_EVENT_MASK,
                                             &mask);
        } else if (type == XCB_MAP_NOTIFY) {
            const auto &mapped = reinterpret_cast<const xcb_map_notify_event_t &>(*event);
            if (mapped.override_redirect != 0)
                sawMap(mapped.window);
        } else if (type == XCB_PROPERTY_NOTIFY) {
            const auto &changed = reinterpret_cast<const xcb_property_notify_event_t &>(*event);
            if (changed.atom == client_.atom(kOpacity))
                sawOpacity(changed.window);
        } else if (type == XCB_UNMAP_NOTIFY) {
            sawUnmap(reinterpret_cast<const xcb_unmap_notify_event_t &>(*event).window);
        }
    }
    xcb_flush(client_.get());
}

void ToastWatch::sawMap(xcb_window_t window) {
    const Time now = std::chrono::steady_clock::now();
    const QRect area = client_.area(window);
    if (isLaunchToast(area.size()))
        launchToasts_.push_back({.window = window, .area = area, .mapped = now});
    else if (isMessageToast(area.size()))
        messageToasts_.push_back({.window = window, .area = area, .mapped = now});
}

void ToastWatch::sawOpacity(xcb_window_t window) {
    const Time now = std::chrono::steady_clock::now();
    Toast *toast = onScreen(window);
    const auto opacity = client_.numbers(window, kOpacity);
    if (!toast)
        return;
    ++toast->steps;
    const bool isOpaque = opacity.empty() || opacity.front() == kOpaque;
    if (isOpaque && !toast->opaque)
        toast->opaque = now;
    else if (!isOpaque && toast->opaque && !toast->fading)
        toast->fading = now;
}

void ToastWatch::sawUnmap(xcb_window_t window) {
    if (Toast *toast = onScreen(window))
        toast->unmapped = std::chrono::steady_clock::now();
}

ToastWatch::Toast *ToastWatch::onScreen(xcb_window_t window) {
    for (auto *toasts : {&launchToasts_, &messageToasts_}) {
        const auto found = std::ranges::find_if(
            *toasts, [&](const Toast &toast) { return toast.window == window && !toast.unmapped; });
        if (found != toasts->end())
            return &*found;
    }
    return nullptr;
}

}  // namespace kestrelbay::desktop
