#include "platform/linux/desktop/PanelGround.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <span>
#include <vector>

namespace kestrelbay::x11 {

namespace {

enum { kWindowType, kDock, kClientList, kAtomCount };
using Atoms = std::array<xcb_atom_t, kAtomCount>;

constexpr std::uint32_t kMostWords = 4096;
constexpr std::uint32_t kAllPlanes = ~0U;
constexpr std::uint8_t kDepthWithAlpha = 32;
constexpr std::uint32_t kOpaque = 0x80;  // at least, of 0xFF

/// Both those that a window manager has in frames and those that it leaves alone.
std::vector<xcb_window_t> topWindows(const XConnection &connection, const Atoms &atoms) {
    const PropertyReply listed =
        connection.readProperty(connection.root(), atoms[kClientList], XCB_ATOM_WINDOW, kMostWords);
    const auto words = propertyWords(listed);
    std::vector<xcb_window_t> all(words.begin(), words.end());
    const Reply<xcb_query_tree_reply_t> tree(xcb_query_tree_reply(
        connection.get(), xcb_query_tree(connection.get(), connection.root()), nullptr));
    if (tree) {
        const std::span children(
            xcb_query_tree_children(tree.get()),
            static_cast<std::size_t>(xcb_query_tree_children_length(tree.get())));
        all.insert(all.end(), children.begin(), children.end());
    }
    return all;
}

std::optional<bool> isWindowDark(const XConnection &connection, xcb_window_t window) {
    xcb_connection_t *const c = connection.get();
    const Reply<xcb_get_geometry_reply_t> geometry(
        xcb_get_geometry_reply(c, xcb_get_geometry(c, window), nullptr));
    if (!geometry)
        return std::nullopt;
    // Refused while the window is not in view as a whole.
    const Reply<xcb_get_image_reply_t> image(
        xcb_get_image_reply(c,
                            xcb_get_image(c, XCB_IMAGE_FORMAT_Z_PIXMAP, window, 0, 0,
                                          geometry->width, geometry->height, kAllPlanes),
                            nullptr));
    const std::size_t count = std::size_t{geometry->width} * geometry->height;
    if (!image || static_cast<std::size_t>(xcb_get_image_data_length(image.get())) !=
                      count * sizeof(std::uint32_t))
        return std::nullopt;
    std::vector<std::uint32_t> pixels(count);
    std::memcpy(pixels.data(), xcb_get_image_data(image.get()), count * sizeof(std::uint32_t));
    if (image->depth == kDepthWithAlpha)
        std::erase_if(pixels, [](std::uint32_t pixel) { return pixel >> 24U < kOpaque; });
    if (pixels.size() * 2 <= count)
        return std::nullopt;
    const auto light = std::ranges::count_if(pixels, [](std::uint32_t pixel) {
        // Of 8 bits each, stretched to 16.
        const auto part = [&](unsigned shift) { return (pixel >> shift & 0xFFU) * 0x101U; };
        return isLight(part(16), part(8), part(0));
    });
    return static_cast<std::size_t>(light) * 2 <= pixels.size();
}

}  // namespace

// Weights of Rec. 601.
bool isLight(std::uint32_t red, std::uint32_t green, std::uint32_t blue) {
    const auto part = [](std::uint32_t value) { return value & 0xFFFFU; };
    return 299 * part(red) + 587 * part(green) + 114 * part(blue) > 1000U * 0x8000U;
}

std::optional<bool> isPanelDark(const XConnection &connection, xcb_window_t tray) {
    const Atoms atoms = internAtoms(
        connection, std::array<std::string_view, kAtomCount>{
                        "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DOCK", "_NET_CLIENT_LIST"});
    const std::uint32_t clientBits = ~xcb_get_setup(connection.get())->resource_id_mask;
    for (const xcb_window_t window : topWindows(connection, atoms)) {
        if (((window ^ tray) & clientBits) != 0)
            continue;
        const PropertyReply types =
            connection.readProperty(window, atoms[kWindowType], XCB_ATOM_ATOM, kMostWords);
        const auto words = propertyWords(types);
        if (std::ranges::find(words, atoms[kDock]) == words.end())
            continue;
        if (const auto dark = isWindowDark(connection, window))
            return dark;
    }
    return std::nullopt;
}

}  // namespace kestrelbay::x11
