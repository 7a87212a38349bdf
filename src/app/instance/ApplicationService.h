#pragma once

#include <QLatin1StringView>
#include <QString>

#include <array>
#include <functional>
#include <map>
#include <memory>

class QObject;

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

/// What others of this session may ask of the running program, over the session bus. Systems
/// without one (macOS) leave it unreachable.
class ApplicationService final {
public:
    /// The name on the session bus, which is also the desktop file id.
    static constexpr QLatin1StringView kName{"org.kestrelbay.KestrelBay"};

    /// Those without a parameter.
    using Actions = std::map<QString, std::function<void()>>;

    /// Called on the main thread. All texts that they take are the callers', of any length.
    struct Offers {
        /// What starting the program once more means.
        std::function<void()> activate;
        Actions actions;
        /// False when no rule has the id. The second is the token by which the desktop lets what
        /// is launched come forward, if there is one.
        std::function<bool(const QString &id, const QString &activationToken)> runRule;
        /// How this instance is, for a report of a problem.
        std::function<QString()> report;
        /// False when the rules are no list of rules, or could not be saved.
        std::function<bool(const QString &rules)> importRules;
    };

    explicit ApplicationService(Offers offers);
    ~ApplicationService();
    ApplicationService(const ApplicationService &) = delete;
    ApplicationService &operator=(const ApplicationService &) = delete;

    /// Takes the name. False when there is no session bus or another instance has
    /// the name.
    [[nodiscard]] bool registerOnSessionBus();

    /// One without a parameter; nothing for an unknown name.
    void performAction(const QString &name) const;

private:
    Offers offers_;
    std::unique_ptr<QObject> onBus_;
};

}  // namespace kestrelbay
