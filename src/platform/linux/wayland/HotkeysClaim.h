#pragma once

#include <optional>

#include <QString>

namespace kestrelbay::wayland {

/// The one instance of this program that binds keys in a session where bindings belong to nobody,
/// so that a second one would take them over without a word. The kernel frees it however the
/// program ends.
class HotkeysClaim {
public:
    /// By a file of the session's. None when another instance has it; where the file cannot be made
    /// nobody is kept out.
    [[nodiscard]] static std::optional<HotkeysClaim> take(const QString &path);

    ~HotkeysClaim();
    HotkeysClaim(HotkeysClaim &&other) noexcept;
    HotkeysClaim &operator=(HotkeysClaim &&) = delete;

    /// A child that inherits it holds the claim as well; -1 where nobody is kept out.
    [[nodiscard]] int descriptor() const { return descriptor_; }

private:
    explicit HotkeysClaim(int descriptor) : descriptor_(descriptor) {}

    int descriptor_;
};

}  // namespace kestrelbay::wayland
