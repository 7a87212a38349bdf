#pragma once

#include "settings/SettingsKeys.h"
#include "ui/widgets/PopupButton.h"

namespace kestrelbay {

struct PreferencesServices;

/// A choice of one among several values, each a text that is stored and has a title. Writes
/// the setting whenever the user chooses, also the same value again.
class SettingPopup final : public PopupButton {
    Q_OBJECT

public:
    SettingPopup(UserDefaults &defaults, const TextKey &key, const QString &name, int width);

    /// The first with that value; without one the selection stays.
    void selectValue(const QString &value);

Q_SIGNALS:
    /// The user has chosen the value, which is written now.
    void chosen(const QString &value);

protected:
    void wheelEvent(QWheelEvent *event) override;
};

/// Those of the settings of the same names. The services have to outlive them.
[[nodiscard]] SettingPopup *makeLanguagePopup(const PreferencesServices &services);
[[nodiscard]] SettingPopup *makeSoundPopup(const PreferencesServices &services);
[[nodiscard]] SettingPopup *makeToastPopup(const PreferencesServices &services);

}  // namespace kestrelbay
