#include "settings/L.h"

#include <utility>

#include <gtest/gtest.h>

#include "platform/EventTap.h"
#include "settings/LFixture.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

/// What the preferences say when hotkeys do not work.
class LAccessTest : public LFixture {};

constexpr TapProblem kProblems[]{TapProblem::NotPermitted, TapProblem::WaylandSession,
                                 TapProblem::NoDisplay, TapProblem::NoInputExtension,
                                 TapProblem::OtherInstance};

TEST_F(LAccessTest, MacosAlwaysPointsToTheSettings) {
    for (const TapProblem problem : kProblems) {
        const LText &text = accessMissing(macosTexts(), problem);
        EXPECT_EQ(
            text.english.toString(),
            u"\u26A0\uFE0F Not granted \u2014 go to System Settings \u203A Privacy & Security \u203A Accessibility to allow KestrelBay"_s);
        EXPECT_EQ(
            text.chinese.toString(),
            u"\u26A0\uFE0F 未授权 \u2014 请前往系统设置 \u203A 隐私与安全性 \u203A 辅助功能，允许 KestrelBay"_s);
    }
}

TEST_F(LAccessTest, LinuxNamesNothingThatIsNotThere) {
    for (const TapProblem problem : kProblems)
        expectNothingOfMacos(accessMissing(linuxTexts(), problem));
}

TEST_F(LAccessTest, LinuxNamesWhatIsMissing) {
    const auto english = [](TapProblem problem) {
        return accessMissing(linuxTexts(), problem).english;
    };
    const auto chinese = [](TapProblem problem) {
        return accessMissing(linuxTexts(), problem).chinese;
    };
    for (const auto &[problem, word] : {std::pair{TapProblem::WaylandSession, u"Wayland"_s},
                                        std::pair{TapProblem::NoDisplay, u"X11"_s},
                                        std::pair{TapProblem::NoInputExtension, u"XInput 2.1"_s},
                                        std::pair{TapProblem::OtherInstance, u"KestrelBay"_s}}) {
        EXPECT_TRUE(english(problem).contains(word)) << word.toStdString();
        EXPECT_TRUE(chinese(problem).contains(word)) << word.toStdString();
        EXPECT_TRUE(english(problem).startsWith(u"\u26A0 Not available \u2014 "));
        EXPECT_NE(english(problem), english(TapProblem::NotPermitted));
    }
    EXPECT_EQ(english(TapProblem::None), english(TapProblem::NotPermitted));
}

TEST_F(LAccessTest, ThisSystemSaysItsOwn) {
    for (const TapProblem problem : kProblems) {
        choose(Language::en);
        EXPECT_EQ(L::accessMissing(problem),
                  accessMissing(systemTexts(), problem).english.toString());
        choose(Language::zh);
        EXPECT_EQ(L::accessMissing(problem),
                  accessMissing(systemTexts(), problem).chinese.toString());
    }
}

}  // namespace

}  // namespace kestrelbay
