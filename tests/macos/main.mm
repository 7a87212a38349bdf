#include <gtest/gtest.h>

#include <QGuiApplication>

#import <Foundation/Foundation.h>

#include "fakes/MacJournal.h"

namespace {

/// Each test has a pool of its own, so that what it leaves is gone before the next.
class EachTest final : public ::testing::EmptyTestEventListener {
    void OnTestStart(const ::testing::TestInfo &) override {
        pool_ = [[NSAutoreleasePool alloc] init];
    }
    void OnTestEnd(const ::testing::TestInfo &) override {
        static_cast<void>(kestrelbay::macos::takeCalls());
        [pool_ release];
    }

    NSAutoreleasePool *pool_ = nil;
};

}  // namespace

/// Foundation itself keeps what it has made once.
extern "C" const char *__asan_default_options() {  // NOLINT: its name is given
    return "detect_leaks=0";
}

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    ::testing::UnitTest::GetInstance()->listeners().Append(new EachTest);
    return RUN_ALL_TESTS();
}
