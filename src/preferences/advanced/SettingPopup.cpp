#include "preferences/advanced/SettingPopup.h"

#include <QWheelEvent>

#include "platform/SystemSounds.h"
#include "preferences/PreferencesServices.h"
#include "settings/FeedbackSounds.h"
#include "settings/L.h"
#include "settings/Language.h"
#include "settings/Notifications.h"
#include "ui/look/Fonts.h"

namespace kestrelbay {

namespace {

constexpr int kFont = 12;
constexpr int kLanguageWidth = 100;
constexpr int kSoundWidth = 140;
constexpr int kToastWidth = 140;

}  // namespace

SettingPopup::SettingPopup(UserDefaults &defaults, const TextKey &key, const QString &name,
                           int width) {
    setObjectName(name);
    setFont(systemFont(kFont));
    setFixedWidth(width);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setFocusPolicy(Qt::StrongFocus);
    connect(this, &QComboBox::activated, this, [this, &defaults, key](int index) {
        const QString value = itemData(index).toString();
        write(defaults, key, value);
        Q_EMIT chosen(value);
    });
}

void SettingPopup::selectValue(const QString &value) {
    if (const int index = findData(value); index >= 0)
        setCurrentIndex(index);
}

void SettingPopup::wheelEvent(QWheelEvent *event) {
    // The wheel is meant for the list of settings, not for what is under the pointer.
    event->ignore();
}

SettingPopup *makeLanguagePopup(const PreferencesServices &services) {
    auto *const popup = new SettingPopup(services.defaults, settings::kAppLanguage,
                                         QStringLiteral("language"), kLanguageWidth);
    popup->addItem(L::languageNameChinese(), Language(Language::zh).rawValue());
    popup->addItem(L::languageNameEnglish(), Language(Language::en).rawValue());
    popup->selectValue(Language::current(services.defaults).rawValue());
    QObject::connect(popup, &SettingPopup::chosen, &services.notifications,
                     &Notifications::languageDidChange);
    return popup;
}

SettingPopup *makeSoundPopup(const PreferencesServices &services) {
    auto *const popup = new SettingPopup(services.defaults, settings::kSoundFeedbackName,
                                         QStringLiteral("sound"), kSoundWidth);
    popup->addItem(L::soundNone(), QLatin1StringView(""));
    for (const QString &name :
         feedbackSounds(services.sounds.directories(), services.sounds.suffixes()))
        popup->addItem(name, name);
    popup->selectValue(read(services.defaults, settings::kSoundFeedbackName));
    QObject::connect(popup, &SettingPopup::chosen, popup,
                     [&sounds = services.sounds](const QString &value) {
                         if (!value.isEmpty())
                             sounds.play(value);
                     });
    return popup;
}

SettingPopup *makeToastPopup(const PreferencesServices &services) {
    auto *const popup = new SettingPopup(services.defaults, settings::kLaunchToastDuration,
                                         QStringLiteral("toast"), kToastWidth);
    popup->addItem(L::launchToastNone(), rawValue(LaunchToastDuration::None));
    popup->addItem(L::launchToastShort(), rawValue(LaunchToastDuration::Short));
    popup->addItem(L::launchToastMedium(), rawValue(LaunchToastDuration::Medium));
    popup->addItem(L::launchToastLong(), rawValue(LaunchToastDuration::Long));
    popup->selectValue(read(services.defaults, settings::kLaunchToastDuration));
    return popup;
}

}  // namespace kestrelbay
