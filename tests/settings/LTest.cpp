#include "settings/L.h"

#include <gtest/gtest.h>

#include "platform/EventTap.h"
#include "settings/LFixture.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

class LTest : public LFixture {};

TEST_F(LTest, OnlyTheExactRawValueIsChinese) {
    for (const QString &stored : {u"ZH"_s, u"zh-Hans"_s, u""_s, u"zh "_s}) {
        defaults_.setString(u"appLanguage"_s, stored);
        EXPECT_EQ(L::cancel(), u"Cancel"_s) << stored.toStdString();
    }
    defaults_.storeNumber(u"appLanguage"_s, 1);
    EXPECT_EQ(L::cancel(), u"Cancel"_s);
}

TEST_F(LTest, ATextIsResolvedAtEachUse) {
    const QString before = L::quit();
    choose(Language::zh);
    EXPECT_EQ(L::quit(), u"退出"_s);
    choose(Language::en);
    EXPECT_EQ(L::quit(), u"Quit"_s);
    EXPECT_EQ(before, u"Quit"_s);
}

TEST_F(LTest, WithoutSettingsTextsAreEnglish) {
    choose(Language::zh);
    Language::setDefaults(nullptr);
    EXPECT_EQ(Language::current(), Language::en);
    EXPECT_EQ(L::quit(), u"Quit"_s);
}

TEST_F(LTest, TheLanguageInForceIsThatOfTheSettingsGivenLast) {
    FakeUserDefaults chinese;
    chinese.setString(u"appLanguage"_s, u"zh"_s);
    EXPECT_EQ(Language::current(), Language::en);
    Language::setDefaults(&chinese);
    EXPECT_EQ(Language::current(), Language::zh);
    Language::setDefaults(&defaults_);
    EXPECT_EQ(Language::current(), Language::en);
}

TEST_F(LTest, DeletionNamesTheRule) {
    EXPECT_EQ(L::deleteConfirmMsg(u"Files"_s),
              u"Are you sure you want to delete the shortcut for \"Files\"?"_s);
    choose(Language::zh);
    EXPECT_EQ(L::deleteConfirmMsg(u"Files"_s),
              u"确定要删除\u300CFiles\u300D的快捷键配置吗\uFF1F"_s);
}

TEST_F(LTest, DeletionOfANamelessRule) {
    EXPECT_EQ(L::deleteConfirmMsg(QString()),
              u"Are you sure you want to delete the shortcut for \"\"?"_s);
    choose(Language::zh);
    EXPECT_EQ(L::deleteConfirmMsg(QString()), u"确定要删除\u300C\u300D的快捷键配置吗\uFF1F"_s);
}

TEST_F(LTest, NamesArePutInUnchanged) {
    const QString name = u" \"A\" 「B」 %1 &C\n"_s;
    EXPECT_EQ(L::deleteConfirmMsg(name),
              u"Are you sure you want to delete the shortcut for \""_s + name + u"\"?"_s);
    EXPECT_EQ(L::advancedPanelTitle(name), u"Advanced \u00B7 "_s + name);
    choose(Language::zh);
    EXPECT_EQ(L::deleteConfirmMsg(name), u"确定要删除「"_s + name + u"」的快捷键配置吗？"_s);
    EXPECT_EQ(L::advancedPanelTitle(name), u"高级选项 \u00B7 "_s + name);
}

TEST_F(LTest, AnyNumberOfRulesIsCounted) {
    EXPECT_EQ(L::rulesCount(0), u"0 configured"_s);
    EXPECT_EQ(L::rulesCount(1234), u"1234 configured"_s);
    choose(Language::zh);
    EXPECT_EQ(L::rulesCount(0), u"已配置 0 个"_s);
    EXPECT_EQ(L::rulesCount(1234), u"已配置 1234 个"_s);
}

TEST_F(LTest, TheVersionIsNotTranslated) {
    EXPECT_EQ(L::aboutVersion(u"1.2"_s), u"Version 1.2"_s);
    choose(Language::zh);
    EXPECT_EQ(L::aboutVersion(u"\u2014"_s), u"Version \u2014"_s);
}

TEST_F(LTest, EachProblemIsNamed) {
    EXPECT_EQ(L::accessMissing(TapProblem::None), L::accessNotPermitted());
    EXPECT_EQ(L::accessMissing(TapProblem::NotPermitted), L::accessNotPermitted());
    EXPECT_EQ(L::accessMissing(TapProblem::WaylandSession), L::accessWaylandSession());
    EXPECT_EQ(L::accessMissing(TapProblem::NoDisplay), L::accessNoDisplay());
    EXPECT_EQ(L::accessMissing(TapProblem::NoInputExtension), L::accessNoInputExtension());
    EXPECT_EQ(L::accessMissing(TapProblem::OtherInstance), L::accessOtherInstance());
}

TEST_F(LTest, ALabelThatIsNoSignIsSpokenAsItIs) {
    EXPECT_EQ(L::spokenKey(u"F12"_s), u"F12"_s);
    EXPECT_EQ(L::spokenKey(u""_s), u""_s);
}

}  // namespace

}  // namespace kestrelbay
