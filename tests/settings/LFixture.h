#pragma once

#include <gtest/gtest.h>

#include <QStringList>

#include "fakes/FakeUserDefaults.h"
#include "fixtures/QtPrinters.h"
#include "settings/L.h"
#include "settings/Language.h"

namespace kestrelbay {

/// Texts in a language that is chosen by hand.
class LFixture : public ::testing::Test {
protected:
    LFixture() { Language::setDefaults(&defaults_); }
    ~LFixture() override { Language::setDefaults(nullptr); }

    void choose(Language language) {
        defaults_.setString(QStringLiteral("appLanguage"), language.rawValue());
    }

    /// What is only there on macOS may not be named elsewhere.
    static void expectNothingOfMacos(const LText &text) {
        using namespace Qt::StringLiterals;
        const QStringList words{
            u"accessibility"_s, u"menu bar"_s, u"System Settings"_s, u"macOS"_s,  u"Finder"_s,
            u"Command"_s,       u"/Users"_s,   u"辅助功能"_s,        u"菜单栏"_s, u"系统设置"_s};
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
