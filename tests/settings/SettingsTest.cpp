#include <gtest/gtest.h>

#include "fakes/FakeUserDefaults.h"
#include "fixtures/QtPrinters.h"
#include "settings/Language.h"
#include "settings/SettingsKeys.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

TEST(SettingsKeys, KeysAreThoseOfTheStoredFile) {
    EXPECT_EQ(settings::kAppLanguage.name, u"appLanguage"_s);
    EXPECT_EQ(settings::kLaunchAtLogin.name, u"launchAtLogin"_s);
    EXPECT_EQ(settings::kSoundFeedbackName.name, u"soundFeedbackName"_s);
    EXPECT_EQ(settings::kLaunchToastDuration.name, u"launchToastDuration"_s);
    EXPECT_EQ(settings::kOnboardingCompleted.name, u"onboardingCompleted"_s);
}

TEST(SettingsKeys, FreshUserHasEnglishNoSoundNoToastNoLoginItemAndTheGuide) {
    const FakeUserDefaults defaults;
    EXPECT_EQ(Language::current(defaults), Language::en);
    EXPECT_EQ(read(defaults, settings::kSoundFeedbackName), QString());
    EXPECT_EQ(read(defaults, settings::kLaunchToastDuration), u"none"_s);
    EXPECT_EQ(currentLaunchToastDuration(defaults), LaunchToastDuration::None);
    EXPECT_FALSE(read(defaults, settings::kLaunchAtLogin));
    EXPECT_FALSE(read(defaults, settings::kOnboardingCompleted));
}

TEST(SettingsKeys, WrittenValuesAreReadBack) {
    FakeUserDefaults defaults;
    write(defaults, settings::kSoundFeedbackName, u"Pop"_s);
    write(defaults, settings::kLaunchAtLogin, true);
    EXPECT_EQ(read(defaults, settings::kSoundFeedbackName), u"Pop"_s);
    EXPECT_TRUE(read(defaults, settings::kLaunchAtLogin));
    EXPECT_EQ(defaults.takeWrites(),
              (QStringList{u"soundFeedbackName=Pop"_s, u"launchAtLogin=true"_s}));
}

TEST(SettingsKeys, ValueOfAnotherTypeReadsAsAbsent) {
    FakeUserDefaults defaults;
    defaults.storeNumber(u"soundFeedbackName"_s, 7);
    defaults.setString(u"launchAtLogin"_s, u"true"_s);
    defaults.setBoolean(u"launchToastDuration"_s, true);
    EXPECT_EQ(read(defaults, settings::kSoundFeedbackName), QString());
    EXPECT_FALSE(read(defaults, settings::kLaunchAtLogin));
    EXPECT_EQ(read(defaults, settings::kLaunchToastDuration), u"none"_s);
    EXPECT_TRUE(defaults.contains(u"launchAtLogin"_s));
}

TEST(Language, AbsentIsEnglish) {
    EXPECT_EQ(Language::current(FakeUserDefaults()), Language::en);
}

TEST(Language, OnlyExactlyZhIsChinese) {
    FakeUserDefaults defaults;
    for (const QString &text :
         {u"ZH"_s, u"Zh"_s, u"zh-Hans"_s, u"zh "_s, u" zh"_s, QString(), u""_s, u"en"_s, u"fr"_s}) {
        defaults.setString(u"appLanguage"_s, text);
        EXPECT_EQ(Language::current(defaults), Language::en) << text.toStdString();
    }
    defaults.setString(u"appLanguage"_s, u"zh"_s);
    EXPECT_EQ(Language::current(defaults), Language::zh);
}

TEST(Language, ValueThatIsNoTextIsEnglish) {
    FakeUserDefaults defaults;
    defaults.storeNumber(u"appLanguage"_s, 1);
    EXPECT_EQ(Language::current(defaults), Language::en);
}

TEST(Language, SystemLanguageIsNotConsulted) {
    const QByteArray before = qgetenv("LANG");
    qputenv("LANG", "zh_CN.UTF-8");
    EXPECT_EQ(Language::current(FakeUserDefaults()), Language::en);
    qputenv("LANG", before);
}

TEST(Language, IsResolvedAtEveryCall) {
    FakeUserDefaults defaults;
    defaults.setString(u"appLanguage"_s, u"zh"_s);
    EXPECT_EQ(Language::current(defaults), Language::zh);
    defaults.setString(u"appLanguage"_s, u"en"_s);
    EXPECT_EQ(Language::current(defaults), Language::en);
}

TEST(Language, RawTexts) {
    EXPECT_EQ(Language(Language::zh).rawValue(), u"zh"_s);
    EXPECT_EQ(Language(Language::en).rawValue(), u"en"_s);
}

TEST(LaunchToastDuration, RawTextsInOrder) {
    QStringList texts;
    for (const LaunchToastDuration duration : kLaunchToastDurations)
        texts.append(rawValue(duration));
    EXPECT_EQ(texts, (QStringList{u"none"_s, u"short"_s, u"medium"_s, u"long"_s}));
}

TEST(LaunchToastDuration, EveryRawTextIsRead) {
    FakeUserDefaults defaults;
    for (const LaunchToastDuration duration : kLaunchToastDurations) {
        EXPECT_EQ(launchToastDurationFromRawValue(rawValue(duration)), duration);
        defaults.setString(u"launchToastDuration"_s, rawValue(duration));
        EXPECT_EQ(currentLaunchToastDuration(defaults), duration);
    }
}

TEST(LaunchToastDuration, UnknownTextIsNoDuration) {
    FakeUserDefaults defaults;
    for (const QString &text : {u"Short"_s, u""_s, u" short"_s, u"forever"_s}) {
        EXPECT_EQ(launchToastDurationFromRawValue(text), std::nullopt);
        defaults.setString(u"launchToastDuration"_s, text);
        EXPECT_EQ(currentLaunchToastDuration(defaults), LaunchToastDuration::None);
    }
}

}  // namespace

}  // namespace kestrelbay
