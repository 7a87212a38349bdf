#include "preferences/transfer/RuleTransfer.h"

#include <QDir>
#include <QFile>
#include <QPushButton>
#include <QTreeWidget>

#include "fixtures/ServicesFixture.h"
#include "model/RuleJson.h"
#include "preferences/transfer/ImportSheet.h"
#include "ui/widgets/TextLabel.h"

namespace kestrelbay {
namespace {

using namespace Qt::StringLiterals;

class RuleTransferTest : public ServicesFixture {
protected:
    RuleTransferTest() { window_.show(); }

    [[nodiscard]] QString path() const { return folder_.filePath(u"other.json"_s); }
    void write(const QByteArray &content) {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    void write(const std::vector<ShortcutRule> &rules) { write(encodeRules(rules)); }
    void importThem() {
        importRulesFrom(path(), services(), &window_, [this] { ++additions_; });
    }
    template <typename Window>
    Window *sheet() {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return window_.findChild<Window *>();
    }
    QStringList texts() {
        QStringList texts;
        for (const TextLabel *label : window_.findChildren<TextLabel *>())
            texts += label->text();
        return texts;
    }
    QStringList rows() {
        QStringList rows;
        const auto *const tree = window_.findChild<QTreeWidget *>();
        for (int i = 0; tree && i < tree->topLevelItemCount(); ++i) {
            const QTreeWidgetItem &item = *tree->topLevelItem(i);
            rows += item.text(0) + u" | "_s + item.text(1) + u" | "_s + item.text(2);
        }
        return rows;
    }

    QWidget window_;
    int additions_ = 0;
};

TEST_F(RuleTransferTest, ShowsWhatItWouldAddBeforeItDoes) {
    catalog_.add(u"/Applications/B"_s, u"B"_s);
    manager().addRule(rule(u"A"_s, 17, 0x100008));
    ShortcutRule off = rule(u"B"_s, 17, 0x100008);
    off.isEnabled = false;
    ShortcutRule withArguments = rule(u"C"_s, 18, 0x100008);
    withArguments.launchArguments = u"--x\n\u202eb"_s;
    withArguments.argumentKind = ArgumentKind::LaunchArgs;
    write({off, withArguments, manager().rules().front(), {.appName = u"None"_s}});
    importThem();
    EXPECT_EQ(names(), QStringList{u"A"_s});
    EXPECT_TRUE(texts().contains(u"To be added: 2 · Left out: 2"_s));
    EXPECT_EQ(rows(),
              (QStringList{u"B\n/Applications/B |  | without hotkey: it is in use\nswitched off"_s,
                           u"C\n/Applications/C --x  b | L⌘1 | not installed here"_s,
                           u"A\n/Applications/A | L⌘T | left out: already in the list"_s,
                           u"None |  | left out: it has no application"_s}));

    sheet<ImportSheet>()->reject();
    EXPECT_EQ(names(), QStringList{u"A"_s});
    EXPECT_EQ(sheet<ImportSheet>(), nullptr);
    importThem();
    sheet<ImportSheet>()->accept();
    EXPECT_EQ(names(), (QStringList{u"A"_s, u"B"_s, u"C"_s}));
    EXPECT_EQ(additions_, 1);
    EXPECT_EQ(toasts_, QStringList{u"Shortcuts added: 2"_s});
}

TEST_F(RuleTransferTest, OffersNothingWhereThereIsNothingToAdd) {
    manager().addRule(rule(u"A"_s));
    write(manager().rules());
    importThem();
    ASSERT_TRUE(sheet<ImportSheet>());
    QStringList buttons;
    for (const QPushButton *button : window_.findChildren<QPushButton *>())
        buttons += button->text();
    EXPECT_EQ(buttons, QStringList{u"Close"_s});
}

TEST_F(RuleTransferTest, SaysWhatItCannotRead) {
    write("{}");
    importThem();
    ASSERT_TRUE(sheet<AlertSheet>());
    EXPECT_TRUE(texts().contains(
        u"\"other.json\" cannot be read as a file of shortcuts. Nothing was added."_s));
}

TEST_F(RuleTransferTest, SaysWhatItCannotSave) {
    write({rule(u"A"_s)});
    importThem();
    // No file can take the place of a folder.
    ASSERT_TRUE(QDir(folder_.path()).mkdir(u"rules.json"_s));
    sheet<ImportSheet>()->accept();
    ASSERT_TRUE(sheet<AlertSheet>());
    EXPECT_TRUE(texts().contains(u"The shortcuts could not be saved. Nothing was added."_s));
    EXPECT_TRUE(manager().rules().empty());
    EXPECT_EQ(additions_, 0);
}

TEST_F(RuleTransferTest, ExportsAllRules) {
    manager().addRule(rule(u"A"_s, 17, 0x100008));
    exportRulesTo(path(), services(), &window_);
    EXPECT_EQ(RuleFile(path()).load().rules, manager().rules());
    EXPECT_EQ(toasts_, QStringList{u"Shortcuts saved in "_s + path()});
}

TEST_F(RuleTransferTest, SaysWhyItDoesNotExport) {
    exportRulesTo(path(), services(), &window_);
    EXPECT_TRUE(texts().contains(u"There are no shortcuts to export."_s));
    manager().addRule(rule(u"A"_s));
    write("Dear diary");
    exportRulesTo(path(), services(), &window_);
    EXPECT_TRUE(texts().contains(
        u"\"other.json\" holds something other than exported shortcuts. It was left as it is."_s));
    exportRulesTo(path() + u"/x"_s, services(), &window_);
    EXPECT_TRUE(texts().contains(u"\"x\" could not be written."_s));
    EXPECT_TRUE(toasts_.isEmpty());
}

}  // namespace
}  // namespace kestrelbay
