#pragma once

#include <functional>

#include <QJsonObject>
#include <QString>
#include <QStringList>

#include "desktop/preferences/PreferencesStage.h"
#include "desktop/session/ScreenReader.h"

namespace kestrelbay::desktop {

/// Keys as X numbers them.
namespace spokenkeys {
inline constexpr std::uint8_t kRight = 114, kEnd = 115, kMenu = 135;
}

/// The stage for those who hear KestrelBay instead of seeing it, and use it by keys alone.
class SpokenStage : public PreferencesStage {
public:
    using Thing = ScreenReader::Thing;

    /// More than any window has places for the keyboard.
    static constexpr int kMostTabs = 60;

    explicit SpokenStage(StageOptions options);

    [[nodiscard]] ScreenReader &reader() { return reader_; }

    /// KestrelBay anew, the preferences opened by the action that a menu or a key of the
    /// desktop calls.
    void beginAt(std::vector<RuleSpec> rules, const QJsonObject &settings = {});
    /// The shown window of that name; nothing when there is none.
    [[nodiscard]] std::optional<Thing> spoken(const QString &window);
    /// All that is said of it.
    [[nodiscard]] QStringList told(const QString &window);
    /// What has the keyboard in the window, as "button: Add (focused)"; empty for nothing.
    [[nodiscard]] QString focused(const QString &window);

    /// A step after which exactly this is said of the window.
    void hears(const QString &done, const QString &window, const QStringList &expected,
               const std::function<void()> &act);
    /// A step after which this has the keyboard.
    void hearsFocus(const QString &done, const QString &window, const QString &expected,
                    const std::function<void()> &act);
    /// Presses Tab until a thing has the keyboard of which this is said; throws NotPrepared
    /// when it never gets it.
    void tabTo(const QString &window, const QString &part);
    /// Presses Tab once and waits until something else has the keyboard; throws NotPrepared.
    Thing tabOn(const QString &window);

private:
    ScreenReader reader_;
};

inline const QString kPreferencesName = QStringLiteral("KestrelBay Preferences");
inline const QString kGuideName = QStringLiteral("KestrelBay");
inline const QString kPickerName = QStringLiteral("Select App");

}  // namespace kestrelbay::desktop
