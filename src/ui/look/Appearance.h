#pragma once

namespace kestrelbay {

class SystemSettings;

/// Gives the user interface the look of the desktop and follows it between light and
/// dark. Where Qt does both by itself, it leaves everything as it is.
class Appearance {
public:
    /// Takes effect at once. The settings have to outlive it, and it the widgets.
    explicit Appearance(SystemSettings &settings);
    ~Appearance();
    Appearance(const Appearance &) = delete;
    Appearance &operator=(const Appearance &) = delete;

private:
    void apply() const;

    SystemSettings &settings_;
};

}  // namespace kestrelbay
