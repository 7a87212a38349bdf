pkg_check_modules(XCB_TAP_TEST REQUIRED IMPORTED_TARGET GLOBAL xcb)

kestrelbay_test(linux_tap_plan_tests
    LABEL fast
    SOURCES linux/x11/keymap/KeyCapsTest.cpp linux/keycodes/KeyCodeTableTest.cpp linux/x11/keymap/KeyGrabsTest.cpp
    LIBRARIES kestrelbay_back_end GTest::gtest_main
)
kestrelbay_test(linux_tap_tests
    LABEL display
    SOURCES
        linux/tapMain.cpp
        linux/x11/connection/XlibLossTest.cpp
        linux/x11/keyboard/DisplayClaimTest.cpp
        linux/x11/keyboard/UnheardHotkeysTest.cpp
        linux/x11/keyboard/XEventTapContractTest.cpp
        linux/x11/keyboard/XEventTapHeldKeysTest.cpp
        linux/x11/keyboard/XEventTapModifiersTest.cpp
        linux/x11/keyboard/XEventTapTest.cpp
        linux/x11/keyboard/XEventTapWatchdogTest.cpp
        linux/x11/keymap/X11KeyboardLayoutTest.cpp
    LIBRARIES kestrelbay_back_end kestrelbay_fakes kestrelbay_hotkeys kestrelbay_test_support PkgConfig::XCB_TAP_TEST
)
