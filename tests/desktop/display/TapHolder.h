#pragma once

#include <optional>

#include <QString>

#include "desktop/display/XClient.h"

namespace kestrelbay::desktop {

/// Has the keys in KestrelBay's place, as another instance of it would.
class TapHolder {
public:
    explicit TapHolder(const QString &displayName) : client_(displayName) {
        const xcb_window_t window = xcb_generate_id(client_->get());
        xcb_create_window(client_->get(), 0, window, client_->root(), -1, -1, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_set_selection_owner(client_->get(), window, client_->atom("_KESTRELBAY_EVENT_TAP"),
                                XCB_CURRENT_TIME);
        client_->sync();
    }

    void letGo() { client_.reset(); }

private:
    std::optional<XClient> client_;
};

}  // namespace kestrelbay::desktop
