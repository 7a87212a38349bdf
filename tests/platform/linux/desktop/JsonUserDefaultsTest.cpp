#include "platform/linux/desktop/JsonUserDefaults.h"

#include <grp.h>
#include <sys/inotify.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <functional>
#include <optional>
#include <thread>

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include "platform/UserDefaultsContract.h"
#include "support/Poll.h"

namespace kestrelbay {

namespace {

class JsonUserDefaultsTest : public ::testing::Test {
protected:
    [[nodiscard]] QString inFolder(const QString &name) const { return folder_.filePath(name); }

    static void write(const QString &path, const QByteArray &content) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }

    static QByteArray read(const QString &path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no such file)");
    }

    [[nodiscard]] QStringList entries() const {
        return QDir(folder_.path()).entryList(QDir::Files | QDir::Hidden | QDir::System);
    }

    QTemporaryDir folder_;
    const QString path_ = folder_.filePath(QStringLiteral("settings.json"));
    const QString key_ = QStringLiteral("appLanguage");
    const QString value_ = QStringLiteral("en");
    JsonUserDefaults defaults_{path_};
};

/// How often a file is opened.
class Opens {
public:
    explicit Opens(const QString &path) : queue_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
        ::inotify_add_watch(queue_, QFile::encodeName(path).constData(), IN_OPEN);
    }
    ~Opens() { ::close(queue_); }
    Opens(const Opens &) = delete;
    Opens &operator=(const Opens &) = delete;

    /// Since it was asked last.
    [[nodiscard]] int count() const {
        int opens = 0;
        inotify_event event{};
        while (::read(queue_, &event, sizeof event) > 0)
            ++opens;
        return opens;
    }

private:
    int queue_;
};

/// What the work saw, done in a process of its own whose limits or user may be changed.
int inChildProcess(const std::function<bool()> &work) {
    const pid_t child = ::fork();
    if (child == 0) {
        ::_exit(work() ? 0 : 1);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    return status;
}

/// Root may write anywhere.
bool becomeNobody() {
    constexpr uid_t kNobody = 65534;
    return ::getuid() != 0 ||
           (::setgroups(0, nullptr) == 0 && ::setgid(kNobody) == 0 && ::setuid(kNobody) == 0);
}

bool allowOneKilobyteFiles() {
    constexpr rlimit kLimit{.rlim_cur = 1024, .rlim_max = 1024};
    return std::signal(SIGXFSZ, SIG_IGN) != SIG_ERR && ::setrlimit(RLIMIT_FSIZE, &kLimit) == 0;
}

}  // namespace

TEST_F(JsonUserDefaultsTest, ReadsWhatAnotherProgramWroteMeanwhile) {
    write(path_, R"({"appLanguage": "zh"})");
    EXPECT_EQ(defaults_.string(key_), QStringLiteral("zh"));
    write(path_, R"({"appLanguage": "en"})");
    EXPECT_EQ(defaults_.string(key_), QStringLiteral("en"));
}

TEST_F(JsonUserDefaultsTest, AFileThatDoesNotChangeIsReadOnce) {
    write(path_, R"({"appLanguage": "zh"})");
    const JsonUserDefaults defaults(path_, std::chrono::milliseconds(100));
    // As soon as no later change could bear the time of this one.
    const Opens opens(path_);
    ASSERT_TRUE(testing::waitUntil([&] {
        EXPECT_EQ(defaults.string(key_), QStringLiteral("zh"));
        return opens.count() == 0;
    }));
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(defaults.string(key_), QStringLiteral("zh"));
    EXPECT_EQ(opens.count(), 0);

    write(path_, R"({"appLanguage": "en"})");
    EXPECT_EQ(defaults.string(key_), QStringLiteral("en"));
    ASSERT_TRUE(QFile::remove(path_));
    EXPECT_EQ(defaults.string(key_), std::nullopt);
}

TEST_F(JsonUserDefaultsTest, AFileJustWrittenIsReadOncePerChange) {
    const JsonUserDefaults defaults(path_);
    for (const QString &value : {QStringLiteral("100"), QStringLiteral("101")}) {
        write(path_, R"({"appLanguage": ")" + value.toUtf8() + R"("})");
        const Opens opens(path_);
        EXPECT_EQ(defaults.string(key_), value);
        EXPECT_EQ(opens.count(), 1);
        for (int i = 0; i < 100; ++i) {
            EXPECT_EQ(defaults.string(key_), value);
            ASSERT_EQ(opens.count(), 0);
        }
    }
}

TEST_F(JsonUserDefaultsTest, ChangesOfTheSameSizeOneRightAfterTheOtherAreAllSeen) {
    const JsonUserDefaults defaults(path_);
    for (int i = 100; i < 300; ++i) {
        write(path_, R"({"appLanguage": ")" + QByteArray::number(i) + R"("})");
        EXPECT_EQ(defaults.string(key_), QString::number(i));
    }
}

TEST_F(JsonUserDefaultsTest, ValuesOfOtherTypesReadAsAbsentButAreThere) {
    for (const char *value : {"1", "null", "[\"en\"]", "{\"a\": true}", "0.5"}) {
        write(path_, QByteArray("{\"appLanguage\": ") + value + "}");
        EXPECT_EQ(defaults_.string(key_), std::nullopt) << value;
        EXPECT_EQ(defaults_.boolean(key_), std::nullopt) << value;
        defaults_.setBoolean(QStringLiteral("b"), true);
        EXPECT_TRUE(read(path_).simplified().replace(" ", "").startsWith(
            "{\"appLanguage\":" + QByteArray(value).replace(" ", "") + ","))
            << value;
    }
}

TEST_F(JsonUserDefaultsTest, BrokenFilesReadAsAbsent) {
    for (const char *text : {"", "{", R"({"appLanguage": "en")", R"(["appLanguage"])", "\xff\xfe",
                             R"({"appLanguage": "en"} x)", "null"}) {
        write(path_, text);
        EXPECT_EQ(defaults_.string(key_), std::nullopt) << text;
        EXPECT_EQ(defaults_.boolean(key_), std::nullopt) << text;
    }
}

TEST_F(JsonUserDefaultsTest, CreatesTheFileAndItsFolders) {
    const QString path = inFolder(QStringLiteral("a/b/settings.json"));
    JsonUserDefaults(path).setString(key_, value_);
    EXPECT_EQ(read(path), "{\n    \"appLanguage\": \"en\"\n}\n");
}

TEST_F(JsonUserDefaultsTest, OtherMembersKeepTheirValuesAndTheirOrder) {
    write(path_,
          "{\"z\": 18446744073709551615, \"appLanguage\": \"zh\","
          " \"a\": [1.5, {\"x}\\\"\": null}], \"n\": -9223372036854775808}");
    defaults_.setString(key_, value_);
    defaults_.setBoolean(QStringLiteral("b"), true);
    EXPECT_EQ(read(path_).simplified(),
              "{ \"z\": 18446744073709551615, \"appLanguage\": \"en\","
              " \"a\": [ 1.5, { \"x}\\\"\": null } ], \"n\": -9223372036854775808, \"b\": true }");
}

TEST_F(JsonUserDefaultsTest, AMemberInsideAnotherValueIsNotMeant) {
    write(path_, R"({"nested": {"appLanguage": "zh"}})");
    EXPECT_EQ(defaults_.string(key_), std::nullopt);
    defaults_.setString(key_, value_);
    EXPECT_EQ(read(path_).simplified(),
              R"({ "nested": { "appLanguage": "zh" }, "appLanguage": "en" })");
}

TEST_F(JsonUserDefaultsTest, AnyTextLeavesAReadableFile) {
    QString text;
    for (char16_t unit = 0; unit < 0x300; ++unit) {
        text += QChar(unit);
    }
    text += QChar(u'\xD800');
    defaults_.setBoolean(key_, true);
    defaults_.setString(text, text);
    EXPECT_EQ(defaults_.boolean(key_), true);
    text.chop(1);
    defaults_.setString(text, text);
    EXPECT_EQ(defaults_.string(text), text);
}

TEST_F(JsonUserDefaultsTest, ABrokenFileIsKeptBeforeItIsReplaced) {
    write(path_, "{\"appLanguage\": ");
    defaults_.setString(key_, value_);
    EXPECT_EQ(defaults_.string(key_), value_);
    EXPECT_EQ(read(path_ + QStringLiteral(".unreadable")), "{\"appLanguage\": ");
}

TEST_F(JsonUserDefaultsTest, AnEarlierKeptFileIsNotOverwritten) {
    for (const char *text : {"first", "second", "third"}) {
        write(path_, text);
        defaults_.setString(key_, value_);
    }
    EXPECT_EQ(read(path_ + QStringLiteral(".unreadable")), "first");
    EXPECT_EQ(read(path_ + QStringLiteral(".unreadable.2")), "second");
    EXPECT_EQ(read(path_ + QStringLiteral(".unreadable.3")), "third");
    EXPECT_EQ(defaults_.string(key_), value_);
}

TEST_F(JsonUserDefaultsTest, AnEmptyFileIsSimplyFilled) {
    write(path_, "\n");
    defaults_.setString(key_, value_);
    EXPECT_EQ(defaults_.string(key_), value_);
    EXPECT_EQ(entries(), QStringList{QStringLiteral("settings.json")});
}

TEST_F(JsonUserDefaultsTest, AFolderInTheFilesPlaceIsLeftAlone) {
    ASSERT_TRUE(QDir().mkdir(path_));
    defaults_.setString(key_, value_);
    EXPECT_EQ(defaults_.string(key_), std::nullopt);
    EXPECT_TRUE(QFileInfo(path_).isDir());
    EXPECT_EQ(entries(), QStringList());
}

TEST_F(JsonUserDefaultsTest, APipeInTheFilesPlaceIsKeptAside) {
    ASSERT_EQ(::mkfifo(QFile::encodeName(path_).constData(), 0600), 0);
    EXPECT_EQ(defaults_.string(key_), std::nullopt);
    defaults_.setString(key_, value_);
    EXPECT_EQ(defaults_.string(key_), value_);
    EXPECT_TRUE(QFileInfo::exists(path_ + QStringLiteral(".unreadable")));
}

TEST_F(JsonUserDefaultsTest, AChainOfLinksIsFollowedToItsEnd) {
    ASSERT_TRUE(QDir(folder_.path()).mkdir(QStringLiteral("dotfiles")));
    const QString target = inFolder(QStringLiteral("dotfiles/keys.json"));
    const QString middle = inFolder(QStringLiteral("dotfiles/middle"));
    write(target, R"({"a": 1})");
    ASSERT_TRUE(QFile::link(QStringLiteral("keys.json"), middle));
    ASSERT_TRUE(QFile::link(QStringLiteral("dotfiles/middle"), path_));
    defaults_.setString(key_, value_);
    EXPECT_EQ(read(target).simplified(), R"({ "a": 1, "appLanguage": "en" })");
    EXPECT_TRUE(QFileInfo(path_).isSymLink());
    EXPECT_TRUE(QFileInfo(middle).isSymLink());
    EXPECT_FALSE(QFileInfo(target).isSymLink());
}

TEST_F(JsonUserDefaultsTest, ADanglingLinkGetsItsTarget) {
    const QString target = inFolder(QStringLiteral("not/yet/keys.json"));
    ASSERT_TRUE(QFile::link(target, path_));
    EXPECT_EQ(defaults_.string(key_), std::nullopt);
    defaults_.setString(key_, value_);
    EXPECT_TRUE(QFileInfo(path_).isSymLink());
    EXPECT_EQ(defaults_.string(key_), value_);
    EXPECT_TRUE(QFileInfo(target).isFile());
}

TEST_F(JsonUserDefaultsTest, ABrokenFileBehindALinkIsKeptBesideIt) {
    const QString target = inFolder(QStringLiteral("keys.json"));
    write(target, "broken");
    ASSERT_TRUE(QFile::link(target, path_));
    defaults_.setString(key_, value_);
    EXPECT_EQ(read(target + QStringLiteral(".unreadable")), "broken");
    EXPECT_EQ(defaults_.string(key_), value_);
    EXPECT_TRUE(QFileInfo(path_).isSymLink());
}

TEST_F(JsonUserDefaultsTest, LinksInACircleAreLeftAlone) {
    const QString other = inFolder(QStringLiteral("other"));
    ASSERT_TRUE(QFile::link(other, path_));
    ASSERT_TRUE(QFile::link(path_, other));
    defaults_.setString(key_, value_);
    EXPECT_EQ(defaults_.string(key_), std::nullopt);
    EXPECT_TRUE(QFileInfo(path_).isSymLink());
    EXPECT_TRUE(QFileInfo(other).isSymLink());
}

TEST_F(JsonUserDefaultsTest, PermissionsOfTheFileStay) {
    write(path_, "{}");
    ASSERT_EQ(::chmod(QFile::encodeName(path_).constData(), 0600), 0);
    defaults_.setString(key_, value_);
    EXPECT_EQ(QFile::permissions(path_) & ~(QFile::ReadUser | QFile::WriteUser),
              QFile::ReadOwner | QFile::WriteOwner);
}

TEST_F(JsonUserDefaultsTest, InAReadOnlyFolderTheOldFileStays) {
    for (const QByteArray &content : {QByteArray(R"({"a": "old"})"), QByteArray("broken")}) {
        write(path_, content);
        ASSERT_EQ(::chmod(QFile::encodeName(folder_.path()).constData(), 0555), 0);
        EXPECT_EQ(inChildProcess([this] {
                      if (!becomeNobody()) {
                          return false;
                      }
                      defaults_.setString(key_, value_);
                      return !defaults_.string(key_);
                  }),
                  0);
        EXPECT_EQ(read(path_), content);
        EXPECT_EQ(entries(), QStringList{QStringLiteral("settings.json")});
        ::chmod(QFile::encodeName(folder_.path()).constData(), 0755);
    }
}

TEST_F(JsonUserDefaultsTest, OnAFullDiskTheOldFileStays) {
    const QByteArray content = R"({"a": ")" + QByteArray(2000, 'x') + R"("})";
    write(path_, content);
    EXPECT_EQ(inChildProcess([this] {
                  if (!allowOneKilobyteFiles()) {
                      return false;
                  }
                  defaults_.setString(key_, value_);
                  return !defaults_.string(key_);
              }),
              0);
    EXPECT_EQ(read(path_), content);
    EXPECT_EQ(entries(), QStringList{QStringLiteral("settings.json")});
}

TEST_F(JsonUserDefaultsTest, ABrokenFileThatCannotBeReplacedIsNotKeptOverAndOver) {
    write(path_, "broken");
    EXPECT_EQ(inChildProcess([this] {
                  if (!allowOneKilobyteFiles()) {
                      return false;
                  }
                  defaults_.setString(key_, QString(2000, QLatin1Char('x')));
                  return !defaults_.string(key_);
              }),
              0);
    EXPECT_EQ(read(path_), "broken");
    EXPECT_EQ(entries(), QStringList{QStringLiteral("settings.json")});
}

TEST_F(JsonUserDefaultsTest, ReadersOnOtherThreadsNeverSeeHalfAWrite) {
    constexpr int kWrites = 200;
    const QString other = QStringLiteral("launchToastDuration");
    defaults_.setString(other, QStringLiteral("long"));
    defaults_.setString(key_, QStringLiteral("0"));
    std::atomic<bool> done = false;
    std::atomic<int> failures = 0;
    const auto reader = [&] {
        int newest = 0;
        while (!done) {
            const int seen = defaults_.string(key_).value_or(QStringLiteral("-1")).toInt();
            failures += seen < newest || defaults_.string(other) != QStringLiteral("long") ? 1 : 0;
            newest = seen;
        }
    };
    std::thread first(reader);
    std::thread second(reader);
    for (int i = 1; i <= kWrites; ++i) {
        defaults_.setString(key_, QString::number(i));
    }
    done = true;
    first.join();
    second.join();
    EXPECT_EQ(failures, 0);
    EXPECT_EQ(defaults_.string(key_), QString::number(kWrites));
}

namespace testing {

namespace {

class JsonStore {
public:
    UserDefaults &defaults() { return defaults_; }

private:
    QTemporaryDir folder_;
    JsonUserDefaults defaults_{folder_.filePath(QStringLiteral("settings.json"))};
};

}  // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(Json, UserDefaultsContract, JsonStore);

}  // namespace testing

}  // namespace kestrelbay
