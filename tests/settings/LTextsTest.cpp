#include "settings/LTexts.h"

#include <ostream>

#include <gtest/gtest.h>

#include "settings/LFixture.h"

namespace kestrelbay {

namespace {

struct Part {
    const char *name;
    LTexts (*texts)();
};

void PrintTo(const Part &part, std::ostream *out) {
    *out << part.name;
}

/// Every text of a part, in both languages and on both systems.
class LTextsTest : public LFixture, public testing::WithParamInterface<Part> {
protected:
    static std::vector<LMember> members() { return GetParam().texts().members; }
    static std::vector<LSystemMember> systemMembers() { return GetParam().texts().systemMembers; }
};

TEST_P(LTextsTest, EveryTextInEnglish) {
    choose(Language::en);
    for (const LMember &member : members())
        EXPECT_EQ(member.text(), member.english);
}

TEST_P(LTextsTest, EveryTextInChinese) {
    choose(Language::zh);
    for (const LMember &member : members())
        EXPECT_EQ(member.text(), member.chinese);
}

TEST_P(LTextsTest, AFreshUserReadsEnglish) {
    for (const LMember &member : members())
        EXPECT_EQ(member.text(), member.english);
}

TEST_P(LTextsTest, TextsOfMacosAreTheGivenOnes) {
    for (const LSystemMember &member : systemMembers()) {
        const LText &text = macosTexts().*member.pair;
        EXPECT_EQ(text.english.toString(), member.english);
        EXPECT_EQ(text.chinese.toString(), member.chinese);
    }
}

TEST_P(LTextsTest, TextsOfLinuxNameNothingThatIsNotThere) {
    for (const LSystemMember &member : systemMembers())
        expectNothingOfMacos(linuxTexts().*member.pair);
}

TEST_P(LTextsTest, TextsOfTheSystemAreThoseOfThisOne) {
    for (const LSystemMember &member : systemMembers()) {
        choose(Language::en);
        EXPECT_EQ(member.text(), (systemTexts().*member.pair).english.toString());
        choose(Language::zh);
        EXPECT_EQ(member.text(), (systemTexts().*member.pair).chinese.toString());
    }
}

INSTANTIATE_TEST_SUITE_P(Parts, LTextsTest,
                         testing::Values(Part{"shell", shellTexts},
                                         Part{"preferences", preferencesTexts}),
                         [](const auto &part) { return part.param.name; });

}  // namespace

}  // namespace kestrelbay
