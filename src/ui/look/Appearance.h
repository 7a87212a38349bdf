#pragma once

namespace kestrelbay {

class SystemSettings;

/// Gives the user interface the look of the desktop: SystemStyle, and a palette that follows the
/// user's wishes as they change. Both are put over nothing but Qt's bare Fusion. Where the user
/// or a platform theme has chosen a style, or Qt follows the system by itself, everything stays
/// as it is.
class Appearance {
public:
    /// Takes effect at once. The settings have to outlive it, and it the widgets.
    /// `isStyleNamed`: the user has named a style, be it Fusion.
    Appearance(SystemSettings &settings, bool isStyleNamed);
    ~Appearance();
    Appearance(const Appearance &) = delete;
    Appearance &operator=(const Appearance &) = delete;

private:
    void apply() const;

    SystemSettings &settings_;
};

}  // namespace kestrelbay
