#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <initializer_list>
#include <string_view>

#include "platform/linux/x11/connection/XConnection.h"

namespace kestrelbay::x11 {

/// The atoms by which window managers and clients talk about windows.
class WindowAtoms {
    static constexpr auto kNames = std::to_array<std::string_view>({
        "_NET_ACTIVE_WINDOW",
        "_NET_CLIENT_LIST",
        "_NET_CLIENT_LIST_STACKING",
        "_NET_CURRENT_DESKTOP",
        "_NET_FRAME_EXTENTS",
        "_NET_REQUEST_FRAME_EXTENTS",
        "_NET_RESTACK_WINDOW",
        "_NET_SUPPORTED",
        "_NET_SUPPORTING_WM_CHECK",
        "_NET_WM_DESKTOP",
        "_NET_WM_NAME",
        "_NET_WM_PID",
        "_NET_WM_STATE",
        "_NET_WM_STATE_DEMANDS_ATTENTION",
        "_NET_WM_STATE_HIDDEN",
        "_NET_WM_STATE_SKIP_TASKBAR",
        "_NET_WM_WINDOW_TYPE",
        "_NET_WM_WINDOW_TYPE_NORMAL",
        "_NET_WM_WINDOW_TYPE_DIALOG",
        "_NET_WM_WINDOW_TYPE_UTILITY",
        "_NET_WM_WINDOW_TYPE_TOOLBAR",
        "_NET_WM_WINDOW_TYPE_MENU",
        "_NET_WM_WINDOW_TYPE_DESKTOP",
        "_NET_WM_WINDOW_TYPE_DOCK",
        "_NET_WM_WINDOW_TYPE_SPLASH",
        "_NET_WM_WINDOW_TYPE_DROPDOWN_MENU",
        "_NET_WM_WINDOW_TYPE_POPUP_MENU",
        "_NET_WM_WINDOW_TYPE_TOOLTIP",
        "_NET_WM_WINDOW_TYPE_NOTIFICATION",
        "_NET_WM_WINDOW_TYPE_COMBO",
        "_NET_WM_WINDOW_TYPE_DND",
        "_GTK_APPLICATION_ID",
        "_KDE_NET_WM_BLUR_BEHIND_REGION",
        "_KDE_NET_WM_DESKTOP_FILE",
        "WM_CHANGE_STATE",
        "WM_CLIENT_MACHINE",
        "WM_STATE",
        "WM_WINDOW_ROLE",
        "_KESTRELBAY_SERVER_TIME",
    });

public:
    /// One that is not in the list does not compile.
    class Name {
    public:
        consteval Name(const char *name)
            : index_(static_cast<std::size_t>(std::ranges::find(kNames, std::string_view(name)) -
                                              kNames.begin())) {
            static_cast<void>(kNames.at(index_));
        }

    private:
        friend class WindowAtoms;
        std::size_t index_;
    };

    explicit WindowAtoms(const XConnection &connection) : atoms_(internAtoms(connection, kNames)) {}

    [[nodiscard]] xcb_atom_t operator[](Name name) const { return atoms_[name.index_]; }
    [[nodiscard]] bool isOneOf(xcb_atom_t atom, std::initializer_list<Name> names) const {
        return std::ranges::any_of(names, [&](Name name) { return atom == (*this)[name]; });
    }

private:
    std::array<xcb_atom_t, kNames.size()> atoms_;
};

}  // namespace kestrelbay::x11
