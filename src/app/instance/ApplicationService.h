#pragma once

#include <QDBusAbstractAdaptor>
#include <QLatin1StringView>
#include <QString>
#include <QVariantList>
#include <QVariantMap>

#include <array>
#include <functional>
#include <map>

namespace kestrelbay {

/// What others may have the program do, by the names that the session bus, the command line
/// and the desktop entry use.
namespace actions {
using namespace Qt::StringLiterals;

inline constexpr QLatin1StringView kToggleAllShortcuts = "toggle-all-shortcuts"_L1;
inline constexpr QLatin1StringView kPreferences = "preferences"_L1;
inline constexpr QLatin1StringView kWelcomeGuide = "welcome-guide"_L1;
inline constexpr QLatin1StringView kAbout = "about"_L1;
inline constexpr QLatin1StringView kQuit = "quit"_L1;

inline constexpr std::array kAll{kToggleAllShortcuts, kPreferences, kWelcomeGuide, kAbout, kQuit};
}  // namespace actions

/// What the session bus may ask of the running program: the methods every desktop
/// application has (org.freedesktop.Application), so that desktop entries and
/// scripts can reach it.
class ApplicationService final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    /// The name on the session bus, which is also the desktop file id.
    static constexpr QLatin1StringView kName{"org.kestrelbay.KestrelBay"};
    static constexpr QLatin1StringView kPath{"/org/kestrelbay/KestrelBay"};

    using Actions = std::map<QString, std::function<void()>>;

    /// Offered by `parent`, which has to outlive the bus connection's use of it.
    ApplicationService(QObject *parent, std::function<void()> activate, Actions actions);

    /// Takes the name. False when there is no session bus or another instance has
    /// the name.
    [[nodiscard]] bool registerOnSessionBus();

public Q_SLOTS:
    // The names and signatures are the freedesktop Desktop Entry Specification's.
    void Activate(const QVariantMap &platformData);
    void Open(const QStringList &uris, const QVariantMap &platformData);
    void ActivateAction(const QString &name, const QVariantList &parameter,
                        const QVariantMap &platformData);

private:
    std::function<void()> activate_;
    Actions actions_;
};

/// Tells other programs of this user, above all `kestrelbay --diagnose`, how the
/// running instance is. Lies at the same name and path.
class DiagnosticsService final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kestrelbay.KestrelBay.Diagnostics")

public:
    static constexpr QLatin1StringView kInterface{"org.kestrelbay.KestrelBay.Diagnostics"};

    DiagnosticsService(QObject *parent, std::function<QString()> report);

public Q_SLOTS:
    QString Report();

private:
    std::function<QString()> report_;
};

}  // namespace kestrelbay
