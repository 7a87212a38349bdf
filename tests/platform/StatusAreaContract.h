#pragma once

#include <functional>

#include <gtest/gtest.h>

#include "platform/StatusArea.h"

namespace kestrelbay::testing {

/// What every status area that is not tinted by the system promises. The Stage type is
/// made afresh for each test, without an area, and has
///   StatusArea &area();
///   void bring()                              the area comes up
///   void setDark(bool)                        … and looks like that
///   bool eventually(std::function<bool()>)    runs the event loop until then
///   void settle()                             returns when nothing more is to be told
template <typename Stage>
class StatusAreaContract : public ::testing::Test {
protected:
    Stage stage_;
};

TYPED_TEST_SUITE_P(StatusAreaContract);

TYPED_TEST_P(StatusAreaContract, CallsOnceWhenItComesUp) {
    int calls = 0;
    this->stage_.area().whenAvailable([&] { ++calls; });
    this->stage_.settle();
    EXPECT_EQ(calls, 0);
    this->stage_.bring();
    EXPECT_TRUE(this->stage_.eventually([&] { return calls > 0; }));
    this->stage_.setDark(true);
    this->stage_.settle();
    EXPECT_EQ(calls, 1);
}

TYPED_TEST_P(StatusAreaContract, CallsWhoAsksWhenItIsThere) {
    this->stage_.bring();
    int calls = 0;
    this->stage_.area().whenAvailable([&] { ++calls; });
    EXPECT_TRUE(this->stage_.eventually([&] { return calls > 0; }));
}

TYPED_TEST_P(StatusAreaContract, TellsWhenItBecomesDarkOrLight) {
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

REGISTER_TYPED_TEST_SUITE_P(StatusAreaContract, CallsOnceWhenItComesUp, CallsWhoAsksWhenItIsThere,
                            TellsWhenItBecomesDarkOrLight);

}  // namespace kestrelbay::testing
