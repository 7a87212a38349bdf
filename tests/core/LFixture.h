#pragma once

#include <vector>

#include <gtest/gtest.h>

#include "core/QtPrinters.h"
#include "fakes/FakeUserDefaults.h"
#include "settings/LSystemTexts.h"
#include "settings/Language.h"

namespace kestrelbay {

/// A text that is the same on every system.
struct LMember {
    QString (*text)();
    QString english;
    QString chinese;
};

/// One that differs between systems, as it reads on macOS.
struct LSystemMember {
    QString (*text)();
    LText LSystemTexts::*pair;
    QString english;
    QString chinese;
};

/// Texts in a language that is chosen by hand.
class LFixture : public testing::Test {
protected:
    LFixture() { Language::setDefaults(&defaults_); }
    ~LFixture() override { Language::setDefaults(nullptr); }

    void choose(Language language) {
        defaults_.setString(QStringLiteral("appLanguage"), language.rawValue());
    }

    static void expectEnglish(const std::vector<LMember> &members) {
        for (const LMember &member : members)
            EXPECT_EQ(member.text(), member.english);
    }
    static void expectChinese(const std::vector<LMember> &members) {
        for (const LMember &member : members)
            EXPECT_EQ(member.text(), member.chinese);
    }
    static void expectTextsOfMacos(const std::vector<LSystemMember> &members) {
        for (const LSystemMember &member : members) {
            EXPECT_EQ((macosTexts().*member.pair).english.toString(), member.english);
            EXPECT_EQ((macosTexts().*member.pair).chinese.toString(), member.chinese);
        }
    }
    void expectTextsOfThisSystem(const std::vector<LSystemMember> &members) {
        for (const LSystemMember &member : members) {
            choose(Language::en);
            EXPECT_EQ(member.text(), (systemTexts().*member.pair).english.toString());
            choose(Language::zh);
            EXPECT_EQ(member.text(), (systemTexts().*member.pair).chinese.toString());
        }
    }
    /// Nothing that is only there on macOS may be named elsewhere.
    static void expectNoneOf(const QStringList &words, const LText &text) {
        for (const QString &word : words) {
            EXPECT_FALSE(text.english.contains(word, Qt::CaseInsensitive)) << word.toStdString();
            EXPECT_FALSE(text.chinese.contains(word, Qt::CaseInsensitive)) << word.toStdString();
        }
        EXPECT_FALSE(text.english.isEmpty());
        EXPECT_FALSE(text.chinese.isEmpty());
    }

    FakeUserDefaults defaults_;
};

}  // namespace kestrelbay
