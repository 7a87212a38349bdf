#include "model/RuleFile.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include "fixtures/QtPrinters.h"

using namespace Qt::StringLiterals;
using Status = kestrelbay::RuleFile::LoadStatus;

namespace kestrelbay {

namespace {

class RuleFileTest : public testing::Test {
protected:
    [[nodiscard]] QString path(const QString &name) const { return folder_.filePath(name); }

    void write(const QString &name, const QByteArray &content) const {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    [[nodiscard]] QByteArray read(const QString &name) const {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : "cannot be read";
    }
    [[nodiscard]] mode_t modeOf(const QString &name) const {
        struct stat facts {};
        return ::stat(QFile::encodeName(path(name)).constData(), &facts) == 0
                   ? facts.st_mode & ALLPERMS
                   : 0;
    }
    [[nodiscard]] QStringList entries() const {
        return QDir(folder_.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    QTemporaryDir folder_;
    RuleFile file_{path(u"rules.json"_s)};
};

const std::vector<ShortcutRule> &oneRule() {
    static const std::vector<ShortcutRule> rules{{.appName = u"Notes"_s, .appPath = u"/Notes"_s}};
    return rules;
}

/// Permissions mean nothing to the superuser.
class WithoutPrivileges {
public:
    explicit WithoutPrivileges(const QString &folder) : user_(geteuid()) {
        if (user_ == 0 && (chown(QFile::encodeName(folder).constData(), kNobody, kNobody) != 0 ||
                           seteuid(kNobody) != 0))
            ADD_FAILURE() << "cannot act as another user";
    }
    ~WithoutPrivileges() {
        if (seteuid(user_) != 0)
            std::abort();
    }
    WithoutPrivileges(const WithoutPrivileges &) = delete;
    WithoutPrivileges &operator=(const WithoutPrivileges &) = delete;

private:
    static constexpr uid_t kNobody = 65534;
    uid_t user_;
};

/// Files cannot grow beyond a size, as on a full disk.
class WithFileSizeLimit {
public:
    explicit WithFileSizeLimit(rlim_t bytes) : oldHandler_(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &old_);
        const rlimit limit{bytes, old_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~WithFileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &old_);
        static_cast<void>(std::signal(SIGXFSZ, oldHandler_));
    }
    WithFileSizeLimit(const WithFileSizeLimit &) = delete;
    WithFileSizeLimit &operator=(const WithFileSizeLimit &) = delete;

private:
    rlimit old_{};
    void (*oldHandler_)(int);
};

TEST_F(RuleFileTest, MissingFileIsToldFromOthers) {
    const RuleFile::LoadResult result = file_.load();
    EXPECT_EQ(result.status, Status::Missing);
    EXPECT_TRUE(result.rules.empty());
    EXPECT_EQ(entries(), QStringList());
}

TEST_F(RuleFileTest, SavedRulesAreLoadedAgain) {
    ASSERT_TRUE(file_.save(oneRule()));
    const RuleFile::LoadResult result = file_.load();
    EXPECT_EQ(result.status, Status::Ok);
    EXPECT_EQ(result.rules, oneRule());
    EXPECT_EQ(entries(), QStringList{u"rules.json"_s});
}

TEST_F(RuleFileTest, WhatIsNoRuleListIsUnusable) {
    for (const char *content : {"{}", "[1]", "", "[", "text"}) {
        write(u"rules.json"_s, content);
        const RuleFile::LoadResult result = file_.load();
        EXPECT_EQ(result.status, Status::Unusable) << content;
        EXPECT_FALSE(result.problem.isEmpty()) << content;
        EXPECT_TRUE(result.rules.empty());
        EXPECT_EQ(read(u"rules.json"_s), content);
    }
}

TEST_F(RuleFileTest, FolderInPlaceOfTheFileIsUnusableAndStays) {
    ASSERT_TRUE(QDir(folder_.path()).mkdir(u"rules.json"_s));
    EXPECT_EQ(file_.load().status, Status::Unusable);
    EXPECT_FALSE(file_.save(oneRule()));
    EXPECT_TRUE(QFileInfo(path(u"rules.json"_s)).isDir());
}

TEST_F(RuleFileTest, PipeInPlaceOfTheFileDoesNotBlock) {
    ASSERT_EQ(mkfifo(QFile::encodeName(path(u"rules.json"_s)).constData(), 0600), 0);
    EXPECT_EQ(file_.load().status, Status::Unusable);
}

TEST_F(RuleFileTest, LinkThatLeadsInACircleIsUnusable) {
    ASSERT_TRUE(QFile::link(u"rules.json"_s, path(u"rules.json"_s)));
    EXPECT_EQ(file_.load().status, Status::Unusable);
    EXPECT_FALSE(file_.save(oneRule()));
}

TEST_F(RuleFileTest, UnusableFileIsKeptBeforeItIsReplaced) {
    write(u"rules.json"_s, "my precious");
    ASSERT_EQ(file_.load().status, Status::Unusable);
    EXPECT_EQ(entries(), QStringList{u"rules.json"_s});

    ASSERT_TRUE(file_.save(oneRule()));
    EXPECT_EQ(read(u"rules.json.unreadable"_s), "my precious");
    EXPECT_EQ(file_.load().rules, oneRule());
}

TEST_F(RuleFileTest, OnlyTheFirstSaveKeepsTheOldFile) {
    write(u"rules.json"_s, "my precious");
    ASSERT_EQ(file_.load().status, Status::Unusable);
    ASSERT_TRUE(file_.save(oneRule()));
    ASSERT_TRUE(file_.save({}));
    EXPECT_EQ(entries(), (QStringList{u"rules.json"_s, u"rules.json.unreadable"_s}));
    EXPECT_EQ(read(u"rules.json.unreadable"_s), "my precious");
}

TEST_F(RuleFileTest, KeptFilesAreNumberedAndNeverOverwritten) {
    for (const char *content : {"first", "second", "third"}) {
        write(u"rules.json"_s, content);
        ASSERT_EQ(file_.load().status, Status::Unusable);
        ASSERT_TRUE(file_.save(oneRule()));
    }
    EXPECT_EQ(read(u"rules.json.unreadable"_s), "first");
    EXPECT_EQ(read(u"rules.json.unreadable.2"_s), "second");
    EXPECT_EQ(read(u"rules.json.unreadable.3"_s), "third");
}

TEST_F(RuleFileTest, DanglingLinkUnderTheNameForKeepingIsNotFollowed) {
    ASSERT_TRUE(QFile::link(u"elsewhere"_s, path(u"rules.json.unreadable"_s)));
    write(u"rules.json"_s, "my precious");
    ASSERT_EQ(file_.load().status, Status::Unusable);
    ASSERT_TRUE(file_.save(oneRule()));
    EXPECT_FALSE(QFileInfo::exists(path(u"elsewhere"_s)));
    EXPECT_EQ(read(u"rules.json.unreadable.2"_s), "my precious");
}

TEST_F(RuleFileTest, UsableFileIsReplacedWithoutACopy) {
    ASSERT_TRUE(file_.save(oneRule()));
    ASSERT_EQ(file_.load().status, Status::Ok);
    ASSERT_TRUE(file_.save({}));
    EXPECT_EQ(entries(), QStringList{u"rules.json"_s});
}

TEST_F(RuleFileTest, FileThatMayNotBeReadIsUnusableAndKept) {
    const WithoutPrivileges scope(folder_.path());
    write(u"rules.json"_s, "[]");
    ASSERT_TRUE(QFile::setPermissions(path(u"rules.json"_s), {}));
    ASSERT_EQ(file_.load().status, Status::Unusable);

    ASSERT_TRUE(file_.save(oneRule()));
    ASSERT_TRUE(QFile::setPermissions(path(u"rules.json.unreadable"_s), QFile::ReadOwner));
    EXPECT_EQ(read(u"rules.json.unreadable"_s), "[]");
}

TEST_F(RuleFileTest, UnreadableFileOfAnotherUserIsKept) {
    if (geteuid() != 0)
        GTEST_SKIP() << "only the superuser can make a file of another user";
    write(u"rules.json"_s, "my precious");
    ASSERT_TRUE(QFile::setPermissions(path(u"rules.json"_s), {}));
    {
        const WithoutPrivileges scope(folder_.path());
        ASSERT_EQ(file_.load().status, Status::Unusable);
        ASSERT_TRUE(file_.save(oneRule()));
        EXPECT_EQ(file_.load().rules, oneRule());
    }
    EXPECT_EQ(read(u"rules.json.unreadable"_s), "my precious");
}

TEST_F(RuleFileTest, ReadOnlyFolderLeavesTheOldFileAlone) {
    const WithoutPrivileges scope(folder_.path());
    write(u"rules.json"_s, "my precious");
    ASSERT_EQ(file_.load().status, Status::Unusable);
    ASSERT_TRUE(QFile::setPermissions(folder_.path(), QFile::ReadOwner | QFile::ExeOwner));
    EXPECT_FALSE(file_.save(oneRule()));
    ASSERT_TRUE(QFile::setPermissions(folder_.path(),
                                      QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    EXPECT_EQ(read(u"rules.json"_s), "my precious");
    EXPECT_EQ(entries(), QStringList{u"rules.json"_s});
}

TEST_F(RuleFileTest, WriteProtectedFileIsReplacedAndStaysSo) {
    const WithoutPrivileges scope(folder_.path());
    write(u"rules.json"_s, "[]");
    for (const mode_t mode : {0444U, 0400U, 0640U, 0666U}) {
        ASSERT_EQ(chmod(QFile::encodeName(path(u"rules.json"_s)).constData(), mode), 0);
        ASSERT_EQ(file_.load().status, Status::Ok);
        ASSERT_TRUE(file_.save(std::vector<ShortcutRule>(mode % 7 + 1))) << mode;
        EXPECT_EQ(file_.load().rules.size(), mode % 7 + 1) << mode;
        EXPECT_EQ(modeOf(u"rules.json"_s), mode);
    }
    EXPECT_EQ(entries(), QStringList{u"rules.json"_s});
}

TEST_F(RuleFileTest, WriteProtectedFileBehindALinkIsReplaced) {
    const WithoutPrivileges scope(folder_.path());
    ASSERT_TRUE(QDir(folder_.path()).mkdir(u"dotfiles"_s));
    write(u"dotfiles/mine.json"_s, "[]");
    ASSERT_EQ(chmod(QFile::encodeName(path(u"dotfiles/mine.json"_s)).constData(), 0444), 0);
    ASSERT_TRUE(QFile::link(u"dotfiles/mine.json"_s, path(u"rules.json"_s)));
    ASSERT_TRUE(file_.save(oneRule()));
    EXPECT_TRUE(QFileInfo(path(u"rules.json"_s)).isSymLink());
    EXPECT_EQ(modeOf(u"dotfiles/mine.json"_s), 0444U);
    EXPECT_TRUE(read(u"dotfiles/mine.json"_s).contains("Notes"));
}

TEST_F(RuleFileTest, NewFileAndFoldersAreForTheUserOnly) {
    const mode_t before = umask(0);
    RuleFile file(path(u"a/b/rules.json"_s));
    EXPECT_TRUE(file.makeFolder());
    EXPECT_TRUE(file.save(oneRule()));
    umask(before);
    EXPECT_EQ(modeOf(u"a"_s), 0700U);
    EXPECT_EQ(modeOf(u"a/b"_s), 0700U);
    EXPECT_EQ(modeOf(u"a/b/rules.json"_s), 0600U);
}

TEST_F(RuleFileTest, OwnerAndGroupStayWhereTheyMay) {
    if (geteuid() != 0)
        GTEST_SKIP() << "only the superuser can make a file of another user";
    write(u"rules.json"_s, "[]");
    ASSERT_EQ(chown(QFile::encodeName(path(u"rules.json"_s)).constData(), 1234, 5678), 0);
    ASSERT_TRUE(file_.save(oneRule()));
    EXPECT_EQ(QFileInfo(path(u"rules.json"_s)).ownerId(), 1234U);
    EXPECT_EQ(QFileInfo(path(u"rules.json"_s)).groupId(), 5678U);
}

TEST_F(RuleFileTest, FullDiskLeavesTheOldFileAlone) {
    ASSERT_TRUE(file_.save(oneRule()));
    const QByteArray before = read(u"rules.json"_s);
    {
        const WithFileSizeLimit limit(20);
        EXPECT_FALSE(file_.save(std::vector<ShortcutRule>(3)));
    }
    EXPECT_EQ(read(u"rules.json"_s), before);
    EXPECT_EQ(entries(), QStringList{u"rules.json"_s});
}

TEST_F(RuleFileTest, FullDiskKeepsAnUnusableFileForTheNextSave) {
    write(u"rules.json"_s, "my precious");
    ASSERT_EQ(file_.load().status, Status::Unusable);
    {
        const WithFileSizeLimit limit(20);
        EXPECT_FALSE(file_.save(oneRule()));
    }
    EXPECT_EQ(read(u"rules.json"_s), "my precious");
    ASSERT_TRUE(file_.save(oneRule()));
    EXPECT_EQ(read(u"rules.json.unreadable"_s), "my precious");
    EXPECT_EQ(entries().size(), 2);
}

TEST_F(RuleFileTest, MissingFolderIsMadeWithTheFirstSave) {
    RuleFile file(path(u"nowhere/yet/rules.json"_s));
    EXPECT_EQ(file.load().status, Status::Missing);
    EXPECT_TRUE(file.save(oneRule()));
    EXPECT_EQ(file.load().rules, oneRule());
}

TEST_F(RuleFileTest, LinkStaysAndItsTargetIsReplaced) {
    ASSERT_TRUE(QDir(folder_.path()).mkdir(u"dotfiles"_s));
    write(u"dotfiles/mine.json"_s, "[]");
    ASSERT_TRUE(QFile::link(u"dotfiles/mine.json"_s, path(u"rules.json"_s)));
    ASSERT_EQ(file_.load().status, Status::Ok);
    ASSERT_TRUE(file_.save(oneRule()));
    EXPECT_TRUE(QFileInfo(path(u"rules.json"_s)).isSymLink());
    EXPECT_TRUE(read(u"dotfiles/mine.json"_s).contains("Notes"));
    EXPECT_EQ(file_.load().rules, oneRule());
}

TEST_F(RuleFileTest, ChainOfLinksStays) {
    ASSERT_TRUE(QDir(folder_.path()).mkdir(u"a"_s));
    ASSERT_TRUE(QFile::link(u"a/second"_s, path(u"rules.json"_s)));
    ASSERT_TRUE(QFile::link(u"../third"_s, path(u"a/second"_s)));
    ASSERT_TRUE(QFile::link(path(u"real.json"_s), path(u"third"_s)));
    write(u"real.json"_s, "[]");
    ASSERT_TRUE(file_.save(oneRule()));
    for (const QString &link : {u"rules.json"_s, u"a/second"_s, u"third"_s})
        EXPECT_TRUE(QFileInfo(path(link)).isSymLink());
    EXPECT_TRUE(read(u"real.json"_s).contains("Notes"));
}

TEST_F(RuleFileTest, ParentFolderBehindALinkIsTheRealOne) {
    // there/../real.json leads to far/real.json, not to real.json beside the link.
    ASSERT_TRUE(QDir(folder_.path()).mkpath(u"far/away"_s));
    ASSERT_TRUE(QFile::link(u"far/away"_s, path(u"there"_s)));
    ASSERT_TRUE(QFile::link(u"there/../real.json"_s, path(u"rules.json"_s)));
    ASSERT_TRUE(file_.save(oneRule()));
    EXPECT_TRUE(QFileInfo::exists(path(u"far/real.json"_s)));
    EXPECT_FALSE(QFileInfo::exists(path(u"real.json"_s)));
}

TEST_F(RuleFileTest, DanglingLinkIsMissingAndGetsItsTarget) {
    ASSERT_TRUE(QFile::link(u"later.json"_s, path(u"rules.json"_s)));
    EXPECT_EQ(file_.load().status, Status::Missing);
    ASSERT_TRUE(file_.save(oneRule()));
    EXPECT_TRUE(QFileInfo(path(u"rules.json"_s)).isSymLink());
    EXPECT_TRUE(read(u"later.json"_s).contains("Notes"));
}

TEST_F(RuleFileTest, UnusableTargetOfALinkIsKeptBesideTheTarget) {
    ASSERT_TRUE(QDir(folder_.path()).mkdir(u"dotfiles"_s));
    write(u"dotfiles/rules.json"_s, "my precious");
    ASSERT_TRUE(QFile::link(u"dotfiles/rules.json"_s, path(u"rules.json"_s)));
    ASSERT_EQ(file_.load().status, Status::Unusable);
    ASSERT_TRUE(file_.save(oneRule()));
    EXPECT_EQ(read(u"dotfiles/rules.json.unreadable"_s), "my precious");
    EXPECT_TRUE(QFileInfo(path(u"rules.json"_s)).isSymLink());
    EXPECT_EQ(file_.load().rules, oneRule());
}

}  // namespace

}  // namespace kestrelbay
