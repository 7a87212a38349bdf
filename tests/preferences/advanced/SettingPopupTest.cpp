#include "preferences/advanced/SettingPopup.h"

#include <memory>
#include <utility>

#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include "fixtures/ServicesFixture.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

using Popup = std::unique_ptr<SettingPopup>;

class SettingPopups : public ServicesFixture {
protected:
    void haveSounds(const QStringList &names) {
        for (const QString &name : names) {
            QFile file(sounds.filePath(name + u".aiff"_s));
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        }
        sounds_.setDirectories({sounds.path()});
    }
    [[nodiscard]] Popup soundPopup() { return Popup(makeSoundPopup(services())); }
    [[nodiscard]] Popup toastPopup() { return Popup(makeToastPopup(services())); }
    [[nodiscard]] Popup languagePopup() { return Popup(makeLanguagePopup(services())); }

    QTemporaryDir sounds;
};

QStringList titles(const Popup &popup) {
    QStringList all;
    for (int i = 0; i < popup->count(); ++i)
        all.append(popup->itemText(i));
    return all;
}

QStringList values(const Popup &popup) {
    QStringList all;
    for (int i = 0; i < popup->count(); ++i)
        all.append(popup->itemData(i).toString());
    return all;
}

/// As if the user had picked it from the list.
void pick(const Popup &popup, int index) {
    popup->setCurrentIndex(index);
    Q_EMIT popup->activated(index);
}

TEST_F(SettingPopups, TheirWidthsAreFixed) {
    EXPECT_EQ(languagePopup()->maximumWidth(), 100);
    EXPECT_EQ(soundPopup()->maximumWidth(), 140);
    EXPECT_EQ(toastPopup()->maximumWidth(), 140);
    EXPECT_EQ(toastPopup()->minimumWidth(), 140);
    EXPECT_EQ(toastPopup()->font().pixelSize(), 12);
}

TEST_F(SettingPopups, TheWheelChoosesNothing) {
    const Popup popup = toastPopup();
    popup->show();
    popup->setFocus();
    defaults_.takeWrites();
    QWheelEvent event({5, 5}, popup->mapToGlobal(QPointF(5, 5)), {0, -120}, {0, -120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(popup.get(), &event);
    EXPECT_EQ(popup->currentIndex(), 0);
    EXPECT_FALSE(event.isAccepted());
    EXPECT_TRUE(defaults_.takeWrites().isEmpty());
}

TEST_F(SettingPopups, LanguagesAreNamedInThemselves) {
    const Popup popup = languagePopup();
    EXPECT_EQ(titles(popup), (QStringList{u"中文"_s, u"English"_s}));
    EXPECT_EQ(values(popup), (QStringList{u"zh"_s, u"en"_s}));
    EXPECT_EQ(popup->currentIndex(), 1);
    choose(Language::zh);
    EXPECT_EQ(languagePopup()->currentIndex(), 0);
}

TEST_F(SettingPopups, ALanguageIsStoredAndThenAnnounced) {
    QObject context;
    QStringList heard;
    QObject::connect(&notifications_, &Notifications::languageDidChange, &context,
                     [&] { heard.append(*defaults_.string(u"appLanguage"_s)); });
    const Popup popup = languagePopup();
    pick(popup, 0);
    pick(popup, 0);
    pick(popup, 1);
    EXPECT_EQ(heard, (QStringList{u"zh"_s, u"zh"_s, u"en"_s}));
}

TEST_F(SettingPopups, SoundsFollowSilence) {
    haveSounds({u"Basso"_s, u"Jump"_s, u"Glass"_s});
    EXPECT_EQ(titles(soundPopup()),
              (QStringList{u"No Sound"_s, u"Jump"_s, u"Basso"_s, u"Glass"_s}));
    EXPECT_EQ(values(soundPopup()), (QStringList{QString(), u"Jump"_s, u"Basso"_s, u"Glass"_s}));
    choose(Language::zh);
    EXPECT_EQ(titles(soundPopup()).first(), u"无声音"_s);
}

TEST_F(SettingPopups, WithoutSoundsThereIsOnlySilence) {
    sounds_.setDirectories({u"/nonexistent"_s});
    EXPECT_EQ(titles(soundPopup()), QStringList{u"No Sound"_s});
}

TEST_F(SettingPopups, TheStoredSoundIsSelected) {
    haveSounds({u"Basso"_s, u"Glass"_s});
    EXPECT_EQ(soundPopup()->currentText(), u"No Sound"_s);
    for (const auto &[stored, shown] :
         {std::pair{u"Glass"_s, u"Glass"_s}, std::pair{u""_s, u"No Sound"_s},
          std::pair{u"glass"_s, u"No Sound"_s}, std::pair{u"Gone"_s, u"No Sound"_s}}) {
        defaults_.setString(u"soundFeedbackName"_s, stored);
        EXPECT_EQ(soundPopup()->currentText(), shown);
        EXPECT_EQ(defaults_.string(u"soundFeedbackName"_s), stored);
    }
}

TEST_F(SettingPopups, AChosenSoundIsStoredAndPlayed) {
    haveSounds({u"Basso"_s, u"Glass"_s});
    const Popup popup = soundPopup();
    pick(popup, 2);
    EXPECT_EQ(defaults_.string(u"soundFeedbackName"_s), u"Glass"_s);
    EXPECT_EQ(sounds_.played(), QStringList{u"Glass"_s});
}

TEST_F(SettingPopups, TheSameSoundIsStoredAndPlayedAgain) {
    haveSounds({u"Basso"_s});
    const Popup popup = soundPopup();
    pick(popup, 1);
    defaults_.takeWrites();
    pick(popup, 1);
    EXPECT_EQ(defaults_.takeWrites(), QStringList{u"soundFeedbackName=Basso"_s});
    EXPECT_EQ(sounds_.played(), (QStringList{u"Basso"_s, u"Basso"_s}));
}

TEST_F(SettingPopups, SilenceIsStoredAsAnEmptyText) {
    haveSounds({u"Basso"_s});
    defaults_.setString(u"soundFeedbackName"_s, u"Basso"_s);
    const Popup popup = soundPopup();
    pick(popup, 0);
    EXPECT_EQ(defaults_.string(u"soundFeedbackName"_s), QString());
    EXPECT_TRUE(sounds_.played().isEmpty());
}

TEST_F(SettingPopups, ToastsAreOfferedByDuration) {
    EXPECT_EQ(titles(toastPopup()), (QStringList{u"Off"_s, u"Brief"_s, u"Medium"_s, u"Long"_s}));
    EXPECT_EQ(values(toastPopup()), (QStringList{u"none"_s, u"short"_s, u"medium"_s, u"long"_s}));
    choose(Language::zh);
    EXPECT_EQ(titles(toastPopup()),
              (QStringList{u"不显示"_s, u"短暂显示"_s, u"适中显示"_s, u"较长显示"_s}));
}

TEST_F(SettingPopups, TheStoredDurationIsSelected) {
    EXPECT_EQ(toastPopup()->currentIndex(), 0);
    defaults_.setString(u"launchToastDuration"_s, u"medium"_s);
    EXPECT_EQ(toastPopup()->currentIndex(), 2);
    defaults_.setString(u"launchToastDuration"_s, u"Medium"_s);
    EXPECT_EQ(toastPopup()->currentIndex(), 0);
}

TEST_F(SettingPopups, AChosenDurationIsStoredAndNoToastShown) {
    const Popup popup = toastPopup();
    pick(popup, 3);
    EXPECT_EQ(defaults_.string(u"launchToastDuration"_s), u"long"_s);
    pick(popup, 0);
    EXPECT_EQ(defaults_.string(u"launchToastDuration"_s), u"none"_s);
    EXPECT_TRUE(toasts_.isEmpty());
}

}  // namespace

}  // namespace kestrelbay
