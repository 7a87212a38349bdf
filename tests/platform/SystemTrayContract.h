#pragma once

#include <functional>

#include <gtest/gtest.h>

#include "platform/SystemTray.h"

namespace kestrelbay::testing {

/// What every system tray that is not tinted by the system promises. The Stage type is
/// made afresh for each test, without an area, and has
///   SystemTray &area();
///   void bring()                              the area comes up
///   void setDark(bool)                        … and looks like that
///   bool eventually(std::function<bool()>)    runs the event loop until then
///   void settle()                             returns when nothing more is to be told
template <typename Stage>
class SystemTrayContract : public ::testing::Test {
protected:
    Stage stage_;
};

TYPED_TEST_SUITE_P(SystemTrayContract);

TYPED_TEST_P(SystemTrayContract, CallsOnceWhenItComesUp) {
    int calls = 0;
    this->stage_.area().whenAvailable([&] { ++calls; });
    this->stage_.settle();
    EXPECT_EQ(calls, 0);
    EXPECT_FALSE(this->stage_.area().isAvailable());
    this->stage_.bring();
    EXPECT_TRUE(this->stage_.eventually([&] { return calls > 0; }));
    EXPECT_TRUE(this->stage_.area().isAvailable());
    this->stage_.setDark(true);
    this->stage_.settle();
    EXPECT_EQ(calls, 1);
}

TYPED_TEST_P(SystemTrayContract, CallsWhoAsksWhenItIsThere) {
    this->stage_.bring();
    int calls = 0;
    this->stage_.area().whenAvailable([&] { ++calls; });
    EXPECT_TRUE(this->stage_.eventually([&] { return calls > 0; }));
}

TYPED_TEST_P(SystemTrayContract, TellsWhenItBecomesDarkOrLight) {
    this->stage_.bring();
    int calls = 0;
    this->stage_.area().setDarkHandler([&] { ++calls; });
    for (const bool dark : {true, false, true}) {
        const int before = calls;
        const bool isNew = this->stage_.area().isDark() != dark;
        this->stage_.setDark(dark);
        EXPECT_TRUE(this->stage_.eventually([&] { return this->stage_.area().isDark() == dark; }));
        EXPECT_TRUE(this->stage_.eventually([&] { return calls > before || !isNew; }));
    }
}

REGISTER_TYPED_TEST_SUITE_P(SystemTrayContract, CallsOnceWhenItComesUp, CallsWhoAsksWhenItIsThere,
                            TellsWhenItBecomesDarkOrLight);

}  // namespace kestrelbay::testing
