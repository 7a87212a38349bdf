#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <unordered_map>
#include <vector>

#include <QString>

#include "platform/linux/applications/matching/ApplicationMatch.h"
#include "platform/linux/x11/connection/WindowSystem.h"

namespace kestrelbay::x11 {

/// Reads what identifies windows, any number of them in one round trip. Any thread.
class WindowFactsReader {
public:
    /// Adds to the facts of a process what is known of it by having launched it.
    using AddLaunch = std::function<void(std::int64_t pid, ProcessFacts &facts)>;

    WindowFactsReader(const WindowSystem &system, AddLaunch addLaunch);

    /// Begins to listen for changes of these windows and asks everything that is
    /// to be known of them. One answer a window, in their order; none for a
    /// window that has gone.
    [[nodiscard]] std::vector<std::optional<WindowFacts>> read(
        std::span<const xcb_window_t> windows) const;

    /// Does a change of this property change the facts?
    [[nodiscard]] bool isIdentity(xcb_atom_t property) const;

private:
    struct Cookies;
    /// Many windows have few processes.
    using Processes = std::unordered_map<std::int64_t, ProcessFacts>;

    [[nodiscard]] Cookies request(xcb_window_t window) const;
    [[nodiscard]] std::optional<WindowFacts> collect(const Cookies &cookies, std::int64_t serverPid,
                                                     Processes &processes) const;
    [[nodiscard]] ProcessFacts processOf(std::int64_t pid, Processes &processes) const;
    [[nodiscard]] WindowType typeOf(std::span<const std::uint32_t> types, bool transient) const;

    const XConnection &connection_;
    const WindowAtoms &atoms_;
    const AddLaunch addLaunch_;
    bool serverKnowsPids_ = false;
};

}  // namespace kestrelbay::x11
