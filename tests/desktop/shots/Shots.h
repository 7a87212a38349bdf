#pragma once

#include <array>
#include <vector>

#include <QImage>
#include <QString>

#include "desktop/session/TrayHost.h"
#include "desktop/stage/ShellStage.h"

namespace kestrelbay::desktop {

/// How KestrelBay looks while pictures of it are taken.
struct Look {
    QString language;  ///< as the settings have it
    bool isDark = false;
    /// Device pixels to a point, as text; empty for one.
    QString scale = {};
    /// Of Qt, as the user names one; empty for none.
    QString style = {};
    bool isContrastHigh = false;

    /// As "zh-dark", "en-light-1.5x" or "en-light-windows".
    [[nodiscard]] QString name() const;
    [[nodiscard]] double factor() const { return scale.isEmpty() ? 1 : scale.toDouble(); }
};

/// What the shots have to work with: KestrelBay in one look.
class ShotStage : public ShellStage {
public:
    explicit ShotStage(StageOptions options) : ShellStage(std::move(options)) {}

    /// Holds for the starts to come.
    void wear(const Look &look);
    /// KestrelBay anew in its look, with these settings besides.
    void begin(QJsonObject settings = {}, Keys keys = Keys::AreFree);
    /// With other rules than the usual ones.
    void beginWith(std::vector<RuleSpec> rules, QJsonObject settings = {},
                   Keys keys = Keys::AreFree);
    /// In device pixels.
    [[nodiscard]] QSize scaled(const QSize &points) const;
    [[nodiscard]] QPoint scaled(const QPoint &points) const;
    [[nodiscard]] const Look &look() const { return look_; }

    /// A window of KestrelBay with its frame, at rest; throws NotPrepared.
    void shootWindow(const QString &name, const QSize &points);
    /// A part of the screen, at rest; throws NotPrepared.
    void shoot(const QString &name, const QRect &area);
    /// As it is just now, at rest or not; throws NotPrepared.
    void shootAtOnce(const QString &name, const QRect &area);
    [[nodiscard]] QRect withFrame(Window window);
    /// The toast of that width that is there by now, and what is around it.
    void shootToast(const QString &name, const std::vector<ToastWatch::Toast> &seen);

private:
    void keep(const QString &name, const QImage &picture) const;

    Look look_;
};

/// One picture, or some that follow from each other.
struct Shot {
    const char *name;
    void (*take)(ShotStage &stage);
};

// All there are. What is added to them is in every look.

/// ShotsShell.cpp: the guide, About, toasts, icons and menus.
[[nodiscard]] const std::vector<Shot> &shellShots();
/// ShotsPreferences.cpp
[[nodiscard]] const std::vector<Shot> &preferencesShots();

}  // namespace kestrelbay::desktop
