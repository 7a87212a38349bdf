#include "app/RuleTransferCommands.h"

#include <cstdlib>
#include <sstream>

#include <QFile>

#include "fakes/FakeApplicationCatalog.h"
#include "hotkeys/ManagerFixture.h"
#include "model/RuleJson.h"

using namespace Qt::StringLiterals;
using Answer = kestrelbay::RunningInstance::ImportAnswer;

namespace kestrelbay {
namespace {

class RuleTransferCommandsTest : public ManagerFixture {
protected:
    [[nodiscard]] QString file() const { return folder_.filePath(u"other.json"_s); }
    void offer(const std::vector<ShortcutRule> &rules) const {
        QFile written(file());
        ASSERT_TRUE(written.open(QIODevice::WriteOnly));
        written.write(encodeRules(rules));
    }
    [[nodiscard]] int import(const std::string &typed, bool canAsk = true,
                             bool isConfirmed = false) {
        std::istringstream in(typed);
        std::ostringstream out;
        const int code = ImportCommand{.storageDirectory = folder_.path(),
                                       .catalog = catalog_,
                                       .handOver =
                                           [this](const QString &rules) {
                                               handedOver_ = rules;
                                               return answer_;
                                           },
                                       .in = in,
                                       .out = out,
                                       .canAsk = canAsk,
                                       .isConfirmed = isConfirmed}
                             .run(file());
        out_ = QString::fromStdString(out.str());
        return code;
    }
    [[nodiscard]] std::vector<ShortcutRule> rulesOnDisk() const {
        return RuleFile(filePath()).load().rules;
    }

    FakeApplicationCatalog catalog_;
    Answer answer_ = Answer::Nobody;
    QString handedOver_;
    QString out_;
};

TEST_F(RuleTransferCommandsTest, ShowsWhatItWouldAddAndAsks) {
    catalog_.add(u"/Applications/B"_s, u"B"_s);
    const std::vector<ShortcutRule> before{rule(u"A"_s, 17, 0x100008)};
    writeFile(encodeRules(before));
    offer(
        {rule(u"B"_s, 17, 0x100008), rule(u"C\033[2J"_s), before.front(), {.appName = u"None"_s}});
    for (const char *answer : {"n\n", "\n", "", "no\ny\n"})
        EXPECT_EQ(import(answer), EXIT_FAILURE);
    EXPECT_EQ(out_,
              u"To be added:\n"
              "  B\t-\t/Applications/B\t(without hotkey: it is in use)\n"
              "  C [2J\t-\t/Applications/C [2J\t(not installed here)\n"
              "  A\tL⌘T\t/Applications/A\t(left out: already in the list)\n"
              "  None\t-\t\t(left out: it has no application)\n"
              "Add them? [y/N] "_s);
    EXPECT_EQ(rulesOnDisk(), before);
    EXPECT_TRUE(handedOver_.isEmpty());
    EXPECT_EQ(import("y\n"), EXIT_SUCCESS);
    EXPECT_EQ(rulesOnDisk().size(), 3U);
    EXPECT_EQ(rulesOnDisk().front(), before.front());
    // There is nothing to ask any more.
    EXPECT_EQ(import(""), EXIT_SUCCESS);
    EXPECT_TRUE(out_.startsWith(u"There is nothing to add.\n"_s));
}

TEST_F(RuleTransferCommandsTest, AddsNothingWhereNobodyCanBeAsked) {
    offer({rule(u"A"_s)});
    EXPECT_EQ(import("y\n", false), EXIT_FAILURE);
    EXPECT_TRUE(out_.endsWith(u"/Applications/A\t(not installed here)\n"_s));
    EXPECT_FALSE(fileExists());
    EXPECT_EQ(import({}, false, true), EXIT_SUCCESS);
    EXPECT_EQ(rulesOnDisk().size(), 1U);
}

TEST_F(RuleTransferCommandsTest, LeavesTheFileToTheRunningInstance) {
    const std::vector<ShortcutRule> rules{rule(u"A"_s)};
    offer(rules);
    answer_ = Answer::Added;
    EXPECT_EQ(import({}, false, true), EXIT_SUCCESS);
    EXPECT_EQ(decodeRules(handedOver_.toUtf8()), rules);
    for (const Answer answer : {Answer::NotAdded, Answer::NoAnswer}) {
        answer_ = answer;
        EXPECT_EQ(import({}, false, true), EXIT_FAILURE);
    }
    EXPECT_FALSE(fileExists());
}

TEST_F(RuleTransferCommandsTest, ChangesNothingWhenSomethingIsWrong) {
    EXPECT_EQ(import("y\n"), EXIT_FAILURE) << "there is no file";
    offer({rule(u"A"_s)});
    writeFile("[{]");
    EXPECT_EQ(import("y\n"), EXIT_FAILURE) << "the rules here cannot be read";
    EXPECT_EQ(exportRulesCommand(folder_.path(), file()), EXIT_FAILURE);
    EXPECT_EQ(RuleFile(file()).load().rules.size(), 1U);
    removeFile();
    EXPECT_EQ(exportRulesCommand(folder_.path(), file()), EXIT_FAILURE) << "there are no rules";
    EXPECT_EQ(RuleFile(file()).load().rules.size(), 1U);
}

TEST_F(RuleTransferCommandsTest, ExportsTheRulesOnDisk) {
    const std::vector<ShortcutRule> rules{rule(u"A"_s, 17, 0x100008)};
    writeFile(encodeRules(rules));
    EXPECT_EQ(exportRulesCommand(folder_.path(), file()), EXIT_SUCCESS);
    EXPECT_EQ(RuleFile(file()).load().rules, rules);
    EXPECT_EQ(exportRulesCommand(folder_.path(), file() + u"/below"_s), EXIT_FAILURE);
}

}  // namespace
}  // namespace kestrelbay
