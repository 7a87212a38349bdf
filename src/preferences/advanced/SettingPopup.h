#pragma once

#include <functional>

#include <QComboBox>

namespace kestrelbay {

struct PreferencesServices;

/// A choice of one among several values, each a text that is stored and has a title.
class SettingPopup final : public QComboBox {
    Q_OBJECT

public:
    explicit SettingPopup(int width);

    void addChoice(const QString &title, const QString &value);

    /// The first with that value; without one the selection stays.
    void selectValue(const QString &value);

    /// Called with the value whenever the user chooses, also the same one again.
    void setOnChoice(std::function<void(const QString &)> onChoice);

protected:
    void wheelEvent(QWheelEvent *event) override;
};

/// Those of the settings of the same names, which they write when something is chosen.
/// The services have to outlive them.
[[nodiscard]] SettingPopup *makeLanguagePopup(const PreferencesServices &services);
[[nodiscard]] SettingPopup *makeSoundPopup(const PreferencesServices &services);
[[nodiscard]] SettingPopup *makeToastPopup(const PreferencesServices &services);

}  // namespace kestrelbay
