#pragma once

#include <optional>

#include <QString>

namespace kestrelbay::sway {

/// The one instance of this program that binds keys in a sway: bindings belong to nobody there, so
/// a second one would take them over without a word. The kernel frees it however the program ends.
class SwayClaim {
public:
    /// None when another instance has it. Where no file can be made beside the socket nobody is
    /// kept out.
    [[nodiscard]] static std::optional<SwayClaim> take(const QString &socketPath);

    ~SwayClaim();
    SwayClaim(SwayClaim &&other) noexcept;
    SwayClaim &operator=(SwayClaim &&) = delete;

    /// A child that inherits it holds the claim as well; -1 where nobody is kept out.
    [[nodiscard]] int descriptor() const { return descriptor_; }

private:
    explicit SwayClaim(int descriptor) : descriptor_(descriptor) {}

    int descriptor_;
};

}  // namespace kestrelbay::sway
