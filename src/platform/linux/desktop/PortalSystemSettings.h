#pragma once

#include <functional>
#include <memory>
#include <optional>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QDeadlineTimer>
#include <QObject>

#include "platform/SystemSettings.h"

namespace kestrelbay {

/// The colour scheme as the settings portal tells it, whenever that comes; until then,
/// or without one, as GNOME's settings have it, and otherwise Light. Accent and contrast as
/// the portal tells them.
///
/// A portal that goes leaves its last word behind: it is usually back in a moment.
class PortalSystemSettings final : public QObject, public SystemSettings {
    Q_OBJECT

public:
    /// Waits for the first answer, at most 100 ms altogether, if the portal runs or
    /// there is none; a portal that has still to be started is not waited for. So the
    /// first window normally comes up in the right colours, and nothing hangs with a
    /// portal that hangs.
    explicit PortalSystemSettings(QDBusConnection bus);
    ~PortalSystemSettings() override;

    [[nodiscard]] std::optional<ColorScheme> colorScheme() const override { return told_.scheme; }
    [[nodiscard]] std::optional<QColor> accentColor() const override { return told_.accent; }
    [[nodiscard]] bool isContrastHigh() const override { return told_.isContrastHigh; }
    void setAppearanceHandler(std::function<void()> handler) override;
    /// There is no such place: every program of an X11 session sees keys.
    [[nodiscard]] bool hasAccessibilityPane() const override { return false; }
    bool openAccessibilityPane() override { return false; }

    [[nodiscard]] bool isPortalPresent() const { return isPortalPresent_ && bus_.isConnected(); }

Q_SIGNALS:
    /// For another service of the platform that follows the colour scheme; comes before
    /// the handler is called.
    void colorSchemeChanged();

private Q_SLOTS:
    void takeChange(const QString &space, const QString &key, const QDBusVariant &value);

private:
    class Desktop;
    struct Appearance {
        ColorScheme scheme = ColorScheme::Light;
        std::optional<QColor> accent;
        bool isContrastHigh = false;

        bool operator==(const Appearance &) const = default;
    };

    void waitForPortal(const QDeadlineTimer &patience);
    void askPortal();
    void takeAnswer(const QDBusMessage &answer);
    void portalVanished();
    void askDesktop();
    void update();

    QDBusConnection bus_;
    QDBusServiceWatcher portalWatch_;
    std::unique_ptr<Desktop> desktop_;
    std::function<void()> handler_;

    std::optional<ColorScheme> fromPortal_;
    std::optional<ColorScheme> fromDesktop_;
    std::optional<QColor> accent_;
    bool isContrastHigh_ = false;
    /// What the handler knows.
    Appearance told_;
    bool isPortalPresent_ = false;
    bool wasStarted_ = false;
};

}  // namespace kestrelbay
