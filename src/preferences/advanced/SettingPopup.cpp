#include "preferences/advanced/SettingPopup.h"

#include <utility>

#include <QWheelEvent>

#include "platform/SystemSounds.h"
#include "preferences/PreferencesServices.h"
#include "settings/FeedbackSounds.h"
#include "settings/L.h"
#include "settings/Language.h"
#include "settings/Notifications.h"
#include "settings/SettingsKeys.h"
#include "ui/look/Fonts.h"

namespace kestrelbay {

namespace {

constexpr int kFont = 12;
constexpr int kLanguageWidth = 100;
constexpr int kSoundWidth = 140;
constexpr int kToastWidth = 140;

QString title(LaunchToastDuration duration) {
    switch (duration) {
        case LaunchToastDuration::None:
            return L::launchToastNone();
        case LaunchToastDuration::Short:
            return L::launchToastShort();
        case LaunchToastDuration::Medium:
            return L::launchToastMedium();
        case LaunchToastDuration::Long:
            return L::launchToastLong();
    }
    return {};
}

}  // namespace

SettingPopup::SettingPopup(int width) {
    setFont(systemFont(kFont));
    setFixedWidth(width);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setFocusPolicy(Qt::StrongFocus);
}

void SettingPopup::addChoice(const QString &title, const QString &value) {
    addItem(title, value);
}

void SettingPopup::selectValue(const QString &value) {
    if (const int index = findData(value); index >= 0)
        setCurrentIndex(index);
}

void SettingPopup::setOnChoice(std::function<void(const QString &)> onChoice) {
    connect(this, &QComboBox::activated, this, [this, onChoice = std::move(onChoice)](int index) {
        // It may destroy the popup, and this function with it.
        const auto call = onChoice;
        call(itemData(index).toString());
    });
}

void SettingPopup::wheelEvent(QWheelEvent *event) {
    // The wheel is meant for the list of settings, not for what is under the pointer.
    event->ignore();
}

SettingPopup *makeLanguagePopup(const PreferencesServices &services) {
    auto *const popup = new SettingPopup(kLanguageWidth);
    popup->setObjectName(QStringLiteral("language"));
    popup->addChoice(L::languageNameChinese(), Language(Language::zh).rawValue());
    popup->addChoice(L::languageNameEnglish(), Language(Language::en).rawValue());
    popup->selectValue(Language::current(services.defaults).rawValue());
    popup->setOnChoice([&defaults = services.defaults,
                        &notifications = services.notifications](const QString &value) {
        write(defaults, settings::kAppLanguage, value);
        Q_EMIT notifications.languageDidChange();
    });
    return popup;
}

SettingPopup *makeSoundPopup(const PreferencesServices &services) {
    auto *const popup = new SettingPopup(kSoundWidth);
    popup->setObjectName(QStringLiteral("sound"));
    popup->addChoice(L::soundNone(), QLatin1StringView(""));
    for (const QString &name :
         feedbackSounds(services.sounds.directories(), services.sounds.suffixes()))
        popup->addChoice(name, name);
    popup->selectValue(read(services.defaults, settings::kSoundFeedbackName));
    popup->setOnChoice(
        [&defaults = services.defaults, &sounds = services.sounds](const QString &value) {
            write(defaults, settings::kSoundFeedbackName, value);
            if (!value.isEmpty())
                sounds.play(value);
        });
    return popup;
}

SettingPopup *makeToastPopup(const PreferencesServices &services) {
    auto *const popup = new SettingPopup(kToastWidth);
    popup->setObjectName(QStringLiteral("toast"));
    for (const LaunchToastDuration duration : kLaunchToastDurations)
        popup->addChoice(title(duration), rawValue(duration));
    popup->selectValue(read(services.defaults, settings::kLaunchToastDuration));
    popup->setOnChoice([&defaults = services.defaults](const QString &value) {
        write(defaults, settings::kLaunchToastDuration, value);
    });
    return popup;
}

}  // namespace kestrelbay
