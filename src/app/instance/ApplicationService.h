#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusMessage>
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
/// The only one with a parameter: the id of the rule, as a text.
inline constexpr QLatin1StringView kRunRule = "run-rule"_L1;

inline constexpr std::array kAll{
    kToggleAllShortcuts, kPreferences, kWelcomeGuide, kAbout, kQuit, kRunRule};
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

    /// What a caller gets who names a rule that there is not.
    static constexpr QLatin1StringView kNoSuchRule{"org.kestrelbay.KestrelBay.Error.NoSuchRule"};

    /// Those without a parameter.
    using Actions = std::map<QString, std::function<void()>>;
    /// False when no rule has the id. The texts are the caller's, of any length; the second is
    /// the token by which the desktop lets what is launched come forward, if there is one.
    using RunRule = std::function<bool(const QString &id, const QString &activationToken)>;

    /// Offered by `parent`, which has to outlive the bus connection's use of it.
    ApplicationService(QObject *parent, std::function<void()> activate, Actions actions,
                       RunRule runRule);

    /// Takes the name. False when there is no session bus or another instance has
    /// the name.
    [[nodiscard]] bool registerOnSessionBus();

    /// One without a parameter; nothing for an unknown name.
    void performAction(const QString &name) const;

public Q_SLOTS:
    // The names and signatures are the freedesktop Desktop Entry Specification's.
    void Activate(const QVariantMap &platformData);
    void Open(const QStringList &uris, const QVariantMap &platformData);
    void ActivateAction(const QString &name, const QVariantList &parameter,
                        const QVariantMap &platformData, const QDBusMessage &call);

private:
    std::function<void()> activate_;
    Actions actions_;
    RunRule runRule_;
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

/// Adds rules for `kestrelbay --import`. Lies at the same name and path.
class RulesService final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kestrelbay.KestrelBay.Rules")

public:
    static constexpr QLatin1StringView kInterface{"org.kestrelbay.KestrelBay.Rules"};

    /// What a caller gets whose rules are no list of rules, or could not be saved.
    static constexpr QLatin1StringView kNotAdded{"org.kestrelbay.KestrelBay.Error.NotAdded"};

    /// False when nothing was added for one of these reasons. The text is the caller's.
    using ImportRules = std::function<bool(const QString &rules)>;

    RulesService(QObject *parent, ImportRules importRules);

public Q_SLOTS:
    void Import(const QString &rules, const QDBusMessage &call);

private:
    ImportRules importRules_;
};

}  // namespace kestrelbay
