#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

#include "platform/SystemSettings.h"
#include "platform/SystemTray.h"
#include "platform/linux/desktop/XEmbedTray.h"

namespace kestrelbay {

/// The tray of a Linux desktop: a panel that shows status notifiers or, failing that,
/// one that embeds windows. Panels start at login, as this program does, so either
/// is waited for as long as it takes.
class LinuxSystemTray final : public QObject, public SystemTray {
    Q_OBJECT

public:
    struct Settings {
        QString displayName;
        /// XDG_CURRENT_DESKTOP.
        QString desktop;
        /// From the start until a tray that only embeds is made do with. Qt takes one
        /// kind or the other for good, and a panel that has both comes up with one
        /// after the other, within a second or so.
        std::chrono::milliseconds graceForNotifiers{2000};
    };

    LinuxSystemTray(QDBusConnection bus, const SystemSettings &systemSettings, Settings settings);

    void whenAvailable(std::function<void()> handler) override;
    /// Of the kind that Qt was let choose, once it was.
    [[nodiscard]] bool isAvailable() const override;
    /// What an embedding tray says of its colours, also while notifiers are shown: panels that
    /// have both kinds (Xfce, MATE) tell nothing else of them. Where it says nothing, what its
    /// panel looks like. Otherwise the panels of KDE follow the colour scheme, and most others
    /// are dark.
    [[nodiscard]] std::optional<bool> isDark() const override;
    /// By the desktops whose panels are known to: others that find an icon draw it black. False
    /// while no theme has the icon, as before an installation; then some draw none.
    [[nodiscard]] bool tintsIcon(const QString &name) const override;
    void setDarkHandler(std::function<void()> handler) override;
    /// Panels are sent Qt's icon.
    void drawSymbol(const QString & /*name*/, const QString & /*description*/) override {}
    /// A left click is told to the program, by both kinds; those few hosts that open the
    /// menu at it do not tell of it.
    [[nodiscard]] bool opensMenus() const override { return false; }
    /// For a report of a problem: "StatusNotifier host", "XEmbed tray" or "none".
    [[nodiscard]] QString description() const;

    /// Returns when it is known whether there is a panel for notifiers, or after 100 ms.
    void waitForAnswer();

    /// The system settings have another colour scheme.
    void colorSchemeChanged();

private Q_SLOTS:
    void askForHost();

private:
    void takeAnswer(const QDBusMessage &answer);
    void setHost(bool present);
    [[nodiscard]] bool hasHost() const { return hasHost_.value_or(false) && bus_.isConnected(); }
    void settle();
    /// One of these, by the names in XDG_CURRENT_DESKTOP.
    [[nodiscard]] bool isDesktop(const QStringList &names) const;
    [[nodiscard]] bool isEmbedding() const;

    const SystemSettings &systemSettings_;
    const Settings settings_;
    QDBusConnection bus_;
    QDBusServiceWatcher watcherWatch_;
    x11::XEmbedTray embedTray_;
    QTimer grace_;
    std::function<void()> availableHandler_;
    std::function<void()> darkHandler_;
    /// None before the first answer.
    std::optional<bool> hasHost_;
    /// Which of the two Qt was let choose, once it was.
    std::optional<bool> settledForHost_;
};

}  // namespace kestrelbay
