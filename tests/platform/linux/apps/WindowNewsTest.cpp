#include <filesystem>
#include <fstream>
#include <string>

#include <sys/syscall.h>
#include <unistd.h>

#include "platform/linux/apps/windows.h"

namespace kestrelbay::testing {
namespace {

/// How often the other threads of this process have gone to sleep so far.
long sleepsOfOtherThreads() {
    long sum = 0;
    const std::string own = std::to_string(::syscall(SYS_gettid));
    for (const auto &thread : std::filesystem::directory_iterator("/proc/self/task")) {
        if (thread.path().filename() == own)
            continue;
        std::ifstream status(thread.path() / "status");
        constexpr std::string_view kKey = "voluntary_ctxt_switches:";
        for (std::string line; std::getline(status, line);)
            if (line.starts_with(kKey))
                sum += std::stol(line.substr(kKey.size()));
    }
    return sum;
}

class WindowNewsOfOthers : public LinuxWorkspaceWindows {
protected:
    void SetUp() override {
        LinuxWorkspaceWindows::SetUp();
        const QString a = entry("Aaa");
        startWindowManager();
        startWorkspace();
        window_ = make("Aaa", 1).front();
        ASSERT_TRUE(waitForRunning(a));
    }

    xcb_window_t window_ = XCB_NONE;
};

TEST_F(WindowNewsOfOthers, TitlesThatChangeWakeNobody) {
    constexpr int kTitles = 100;
    // The first ones may come while nothing has been put off yet.
    EXPECT_TRUE(waitUntil([&] {
        const long before = sleepsOfOtherThreads();
        for (int i = 0; i < kTitles; ++i)
            maker_->setText(window_, "WM_NAME", QByteArray::number(i));
        return sleepsOfOtherThreads() == before;
    }));
}

TEST_F(WindowNewsOfOthers, MenusAndTheirLikeWakeNobody) {
    EXPECT_TRUE(waitUntil([&] {
        const long before = sleepsOfOtherThreads();
        for (int i = 0; i < 20; ++i)
            maker_->destroy(maker_->make({.unmapped = true}));
        return sleepsOfOtherThreads() == before;
    }));
}

TEST_F(WindowNewsOfOthers, IsTakenInAtTheNextPressHoweverMuchThereIs) {
    const QString b = entry("Bbb");
    ASSERT_TRUE(waitUntil([&] { return !running(b); }));
    for (int i = 0; i < 20'000; ++i)
        maker_->setText(window_, "WM_NAME", "x");
    maker_->setText(window_, "WM_CLASS", QByteArray("x\0Bbb\0", 6));
    EXPECT_TRUE(running(b));
}

}  // namespace
}  // namespace kestrelbay::testing
