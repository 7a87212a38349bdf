#include <atomic>
#include <thread>

#include <gtest/gtest.h>

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include "fakes/FakeDesktop.h"
#include "fakes/LiveObjects.h"
#include "fakes/MacJournal.h"
#include "fixtures/QtPrinters.h"
#include "platform/WorkspaceContract.h"
#include "platform/macos/applications/MacWorkspace.h"

namespace kestrelbay::macos {
namespace {

/// Until it holds; the completion handlers run on threads of their own.
bool holdsSoon(const std::function<bool()> &condition) {
    QElapsedTimer time;
    time.start();
    while (!condition()) {
        if (time.hasExpired(10000))
            return false;
        std::this_thread::yield();
    }
    return true;
}

class MacStage final : public testing::WorkspaceStage {
public:
    MacStage() = default;

    Workspace &workspace() override { return workspace_; }
    QString install(const QString &name) override {
        QString path = folder_.filePath(name + QStringLiteral(".app"));
        EXPECT_TRUE(QDir().mkpath(path));
        return path;
    }
    void start(const QString &path, int windows) override {
        @autoreleasepool {
            EXPECT_TRUE(workspace_.open(QUrl::fromLocalFile(path)));
            for (int i = 1; i < windows; ++i)
                desktop_.addWindow(*desktop_.processes().back(), QString::number(i));
        }
    }
    void quit(const QString &path) override { desktop_.quit(path); }
    bool eventually(const std::function<bool()> &condition) override {
        return holdsSoon(condition);
    }

private:
    const QTemporaryDir folder_;
    FakeDesktop desktop_;
    MacWorkspace workspace_;
};

class MacWorkspaceTest : public ::testing::Test {
protected:
    ~MacWorkspaceTest() override {
        desktop_.reset();
        EXPECT_EQ(liveObjects(), objectsBefore_);
    }

    const int objectsBefore_ = liveObjects();
    const QTemporaryDir folder_;
    std::optional<FakeDesktop> desktop_{std::in_place};
    MacWorkspace workspace_;
    /// A folder stands for every application.
    const QString one_ = folder_.path();
    const QUrl oneUrl_ = QUrl::fromLocalFile(one_);
};

TEST_F(MacWorkspaceTest, URLsAreHandedOverAsTheyAreWritten) {
    for (const char *text :
         {"mailto:a@b.c?subject=a%20b", "tel://5551234", "steam://440",
          "shortcuts://RunMe/Do?Name=X", "x-item://8F5B2A1C", "foo:Bar%7ebaz",
          "message://%3CAb%40c%3E", "foo://a%20b/c", "foo://a..b", "foo://-x-", "foo://h:99999/",
          "foo://h/../a/./b//c?%2f#%2F", "foo://[::0001]:080"}) {
        EXPECT_TRUE(workspace_.openUrl(QString::fromLatin1(text))) << text;
        EXPECT_EQ(takeCalls(), QStringList(QStringLiteral("openURL ") + QLatin1String(text)));
    }
    desktop_->refuseRequests(QStringLiteral("no"));
    EXPECT_FALSE(workspace_.openUrl(QStringLiteral("foo:x")));
}

TEST_F(MacWorkspaceTest, OpensAFile) {
    EXPECT_TRUE(workspace_.open(oneUrl_));
    EXPECT_EQ(takeCalls(), QStringList(QStringLiteral("openURL file://") + one_ + u'/'));
    desktop_->refuseRequests(QStringLiteral("no"));
    EXPECT_FALSE(workspace_.open(oneUrl_));
}

TEST_F(MacWorkspaceTest, AnInvalidURLIsNotAskedFor) {
    EXPECT_FALSE(workspace_.open(QUrl()));
    EXPECT_EQ(takeCalls(), QStringList());
}

TEST_F(MacWorkspaceTest, AnApplicationIsFoundBehindALink) {
    const QTemporaryDir folder;
    const QString place = QFileInfo(folder.path()).canonicalFilePath();
    ASSERT_TRUE(QDir().mkpath(place + QStringLiteral("/Cryptex/Caf\u00e9.app")));
    const QUrl target = QUrl::fromLocalFile(place + QStringLiteral("/Cryptex/Caf\u00e9.app"));
    const QUrl link = QUrl::fromLocalFile(place + QStringLiteral("/Link.app"));
    ASSERT_TRUE(QFile::link(target.toLocalFile(), link.toLocalFile()));
    EXPECT_EQ(workspace_.standardized(link), link) << "its own place is the first to count";
    EXPECT_TRUE(workspace_.followsLinks());
    EXPECT_EQ(workspace_.resolved(link), target);
    EXPECT_EQ(workspace_.resolved(target), target);
    EXPECT_EQ(workspace_.resolved(QUrl::fromLocalFile(place + QStringLiteral("/./gone.app"))),
              QUrl::fromLocalFile(place + QStringLiteral("/gone.app")));
    EXPECT_EQ(workspace_.resolved(QUrl()), QUrl());
}

TEST_F(MacWorkspaceTest, NamesAreOneInEveryUnicodeNormalForm) {
    const QUrl composed = QUrl::fromLocalFile(one_ + QStringLiteral("/Caf\u00e9.app"));
    const QUrl decomposed = QUrl::fromLocalFile(one_ + QStringLiteral("/Cafe\u0301.app"));
    EXPECT_EQ(workspace_.standardized(composed), composed);
    EXPECT_EQ(workspace_.standardized(decomposed), composed);
    for (const QUrl &url : {composed, decomposed}) {
        ASSERT_TRUE(QDir().mkpath(url.toLocalFile()));
        EXPECT_TRUE(workspace_.open(url));
        EXPECT_EQ(workspace_.runningApplications().back()->bundleURL(), composed);
    }
}

TEST_F(MacWorkspaceTest, ANewInstanceGetsTheArguments) {
    std::atomic<bool> isDone = false;
    workspace_.openApplication(oneUrl_, {QStringLiteral("-v"), QStringLiteral("a b"), QString()},
                               [&](const QString &error) {
                                   EXPECT_EQ(error, QString());
                                   isDone = true;
                               });
    EXPECT_EQ(takeCalls(), QStringList(QStringLiteral("openApplicationAtURL ") + one_ +
                                       QStringLiteral(" new|-v|a b|")));
    EXPECT_TRUE(holdsSoon([&] { return isDone.load(); }));
}

TEST_F(MacWorkspaceTest, AFailedLaunchTellsWhy) {
    desktop_->refuseRequests(QStringLiteral("The application “x” can’t be opened."));
    std::atomic<bool> isDone = false;
    std::thread::id thread;
    workspace_.openApplication(oneUrl_, {QStringLiteral("x")}, [&](const QString &error) {
        EXPECT_EQ(error, QStringLiteral("The application “x” can’t be opened."));
        thread = std::this_thread::get_id();
        isDone = true;
    });
    ASSERT_TRUE(holdsSoon([&] { return isDone.load(); }));
    EXPECT_NE(thread, std::this_thread::get_id());
}

TEST_F(MacWorkspaceTest, TheCompletionOutlivesTheCall) {
    const auto token = std::make_shared<int>(1);
    std::atomic<bool> isDone = false;
    {
        const auto copy = token;
        Workspace::Completion completion = [copy, &isDone](const QString &) {
            EXPECT_EQ(*copy, 1);
            isDone = true;
        };
        workspace_.openApplication(oneUrl_, {QStringLiteral("x")}, std::move(completion));
    }
    ASSERT_TRUE(holdsSoon([&] { return isDone.load(); }));
    desktop_.reset();
    EXPECT_EQ(token.use_count(), 1);
}

TEST_F(MacWorkspaceTest, WhatIsNoFileIsNotHandedOver) {
    const QUrl page(QStringLiteral("https://example.org/One.app"));
    QString error;
    workspace_.openApplication(page, {QStringLiteral("x")},
                               [&](const QString &text) { error = text; });
    EXPECT_EQ(error, QStringLiteral("not a file: https://example.org/One.app"));
    EXPECT_FALSE(workspace_.openFiles({page}, oneUrl_));
    EXPECT_FALSE(workspace_.openFiles({oneUrl_}, page));
    EXPECT_EQ(takeCalls(), QStringList());
}

TEST_F(MacWorkspaceTest, FilesAreOpenedWithTheDefaultConfiguration) {
    EXPECT_TRUE(workspace_.openFiles({QUrl::fromLocalFile(QStringLiteral("/tmp/a b")),
                                      QUrl::fromLocalFile(QStringLiteral("/no/such file"))},
                                     oneUrl_));
    EXPECT_EQ(takeCalls(), QStringList(QStringLiteral("openURLs /tmp/a b|/no/such file with ") +
                                       one_ + QStringLiteral(" default")));
}

TEST_F(MacWorkspaceTest, FilesThatAreRefusedAreNobodysBusiness) {
    desktop_->refuseRequests(QStringLiteral("no"));
    EXPECT_TRUE(workspace_.openFiles({QUrl::fromLocalFile(QStringLiteral("/tmp"))}, oneUrl_));
    EXPECT_EQ(takeCalls().size(), 1);
}

TEST_F(MacWorkspaceTest, AFolderIsShownInAViewerRootedThere) {
    EXPECT_TRUE(workspace_.showFolder(QStringLiteral("/tmp/a b")));
    EXPECT_EQ(takeCalls(), QStringList(QStringLiteral("selectFile nil rootedAt /tmp/a b")));
    desktop_->refuseRequests(QStringLiteral("no"));
    EXPECT_FALSE(workspace_.showFolder(QStringLiteral("/tmp")));
}

TEST_F(MacWorkspaceTest, TheFinderIsTheFileManager) {
    EXPECT_EQ(workspace_.fileManagerIdentifier(), QStringLiteral("com.apple.finder"));
}

}  // namespace
}  // namespace kestrelbay::macos

namespace kestrelbay::testing {

INSTANTIATE_TEST_SUITE_P(Mac, WorkspaceContract, ::testing::Values([] {
                             return std::unique_ptr<WorkspaceStage>(
                                 std::make_unique<macos::MacStage>());
                         }));

}  // namespace kestrelbay::testing
