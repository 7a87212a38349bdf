#include "model/RuleImport.h"

#include <sys/stat.h>

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "fixtures/QtPrinters.h"
#include "model/RuleExport.h"
#include "model/RuleFile.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

constexpr KeyCode kT{17};
constexpr ModifierFlags kLeftCommand{0x100008};
constexpr ModifierFlags kCommand{0x100000};

ShortcutRule rule(const QString &name, KeyCode key = {}, ModifierFlags flags = {}) {
    return {.appName = name, .appPath = u"/apps/"_s + name, .keyCode = key, .modifierFlags = flags};
}

class RuleImportTest : public testing::Test {
protected:
    [[nodiscard]] QString path(const QString &name) const { return folder_.filePath(name); }
    void write(const QByteArray &content) const {
        QFile file(path(u"in"_s));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    [[nodiscard]] QString problemOf(const QString &file) const {
        QString problem;
        return readRulesToImport(file, problem) ? QString() : problem;
    }
    [[nodiscard]] QByteArray read(const QString &name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : "(none)";
    }

    QTemporaryDir folder_;
};

TEST_F(RuleImportTest, AddsARuleAsItIs) {
    const ShortcutRule incoming = rule(u"A"_s, kT, kLeftCommand);
    const RuleImport import = planImport({rule(u"B"_s)}, {incoming});
    ASSERT_EQ(import.additions.size(), 1U);
    EXPECT_EQ(import.additions[0].rule, incoming);
    EXPECT_FALSE(import.additions[0].lostHotkey);
    EXPECT_TRUE(import.leftOut.empty());
}

TEST_F(RuleImportTest, GivesARuleAnotherIdWhereItsOwnIsTaken) {
    const ShortcutRule present = rule(u"A"_s);
    ShortcutRule first = rule(u"B"_s);
    ShortcutRule second = rule(u"C"_s);
    first.id = present.id;
    second.id = present.id;
    const RuleImport import = planImport({present}, {first, second});
    ASSERT_EQ(import.additions.size(), 2U);
    EXPECT_NE(import.additions[0].rule.id, present.id);
    EXPECT_NE(import.additions[1].rule.id, present.id);
    EXPECT_NE(import.additions[0].rule.id, import.additions[1].rule.id);
}

TEST_F(RuleImportTest, LeavesOutWhatIsThereAndWhatHasNoApplication) {
    const ShortcutRule present = rule(u"A"_s, kT, kLeftCommand);
    ShortcutRule same = present;
    same.id = QUuid::createUuid();
    const RuleImport import = planImport({present}, {present, same, {.appName = u"Empty"_s}});
    EXPECT_TRUE(import.additions.empty());
    ASSERT_EQ(import.leftOut.size(), 3U);
    EXPECT_EQ(import.leftOut[0].reason, RuleImport::Reason::AlreadyThere);
    EXPECT_EQ(import.leftOut[1].reason, RuleImport::Reason::AlreadyThere);
    EXPECT_EQ(import.leftOut[2].reason, RuleImport::Reason::NoApplication);
    EXPECT_EQ(import.leftOut[2].rule.appName, u"Empty"_s);
}

TEST_F(RuleImportTest, TakesTheHotkeyFromARuleThatComesLater) {
    std::vector<ShortcutRule> all{rule(u"A"_s, kT, kCommand)};
    const std::vector<ShortcutRule> incoming{rule(u"B"_s, kT, kLeftCommand),
                                             rule(u"C"_s, KeyCode{18}, kLeftCommand),
                                             rule(u"D"_s, KeyCode{18}, kLeftCommand), rule(u"E"_s)};
    const RuleImport import = planImport(all, incoming);
    QStringList seen;
    for (const RuleImport::Addition &addition : import.additions) {
        seen += addition.rule.appName + addition.rule.hotkeyString() +
                (addition.lostHotkey ? u"!"_s : QString());
        all.push_back(addition.rule);
    }
    EXPECT_EQ(seen, (QStringList{u"B!"_s, u"CL⌘1"_s, u"D!"_s, u"E"_s}));
    // The same file once more.
    EXPECT_TRUE(planImport(all, incoming).additions.empty());
}

TEST_F(RuleImportTest, ReadsNothingButAListOfRules) {
    EXPECT_EQ(problemOf(path(u"in"_s)), u"there is none"_s);
    EXPECT_EQ(problemOf(folder_.path()), u"it is not a file"_s);
    write("{\"appName\":");
    EXPECT_EQ(problemOf(path(u"in"_s)), u"it is not a list of rules"_s);
    write("[" + QByteArray("[").repeated(100'000));
    EXPECT_EQ(problemOf(path(u"in"_s)), u"it is not a list of rules"_s);
    write("[{}" + QByteArray(",{}").repeated(10'000) + "]");
    EXPECT_EQ(problemOf(path(u"in"_s)), u"it has more than 10,000 rules"_s);
    write(QByteArray(" ").repeated(5'000'000));
    EXPECT_EQ(problemOf(path(u"in"_s)), u"it is too large"_s);
    ASSERT_EQ(::mkfifo(QFile::encodeName(path(u"pipe"_s)).constData(), S_IRUSR | S_IWUSR), 0);
    EXPECT_EQ(problemOf(path(u"pipe"_s)), u"it is not a file"_s);
    write(R"([{"appName": "A", "appPath": "/apps/A"}])");
    EXPECT_EQ(problemOf(path(u"in"_s)), QString());
}

TEST_F(RuleImportTest, AnExportIsReadBackAndForTheUserOnly) {
    const std::vector<ShortcutRule> rules{rule(u"A"_s, kT, kLeftCommand), rule(u"B"_s)};
    EXPECT_EQ(exportRules(rules, path(u"own"_s), path(u"in"_s)), RuleExport::Done);
    QString problem;
    EXPECT_EQ(readRulesToImport(path(u"in"_s), problem), rules);
    struct stat facts {};
    ASSERT_EQ(::stat(QFile::encodeName(path(u"in"_s)).constData(), &facts), 0);
    EXPECT_EQ(facts.st_mode & ALLPERMS, mode_t{S_IRUSR | S_IWUSR});
}

TEST_F(RuleImportTest, AnExportReplacesAnEarlierOneOnly) {
    const std::vector<ShortcutRule> rules{rule(u"A"_s)};
    const auto exportTo = [&](const QString &name) {
        return exportRules(rules, path(u"own"_s), path(name));
    };
    write("Dear diary");
    EXPECT_EQ(exportTo(u"in"_s), RuleExport::OtherFile);
    EXPECT_EQ(read(u"in"_s), "Dear diary");
    write("");
    EXPECT_EQ(exportTo(u"in"_s), RuleExport::Done);
    EXPECT_EQ(exportTo(u"in"_s), RuleExport::Done);
    const QByteArray whole = read(u"in"_s);
    EXPECT_EQ(exportRules({}, path(u"own"_s), path(u"in"_s)), RuleExport::NoRules);
    EXPECT_EQ(read(u"in"_s), whole);
    EXPECT_EQ(exportRules(rules, path(u"in"_s), path(u"in"_s)), RuleExport::OtherFile);
    EXPECT_EQ(exportTo(u"in/below"_s), RuleExport::NotWritten);
}

}  // namespace
}  // namespace kestrelbay
