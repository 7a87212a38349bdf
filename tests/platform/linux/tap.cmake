pkg_check_modules(XCB_TAP_TEST REQUIRED IMPORTED_TARGET GLOBAL xcb)

kestrelbay_test(linux_tap_plan_tests
    LABEL fast
    SOURCES linux/KeyCodeTableTest.cpp linux/KeyGrabPlanTest.cpp
    LIBRARIES kestrelbay_back_end GTest::gtest_main
)
kestrelbay_test(linux_tap_tests
    LABEL display
    SOURCES linux/XEventTapTest.cpp linux/XEventTapContractTest.cpp
    LIBRARIES kestrelbay_back_end kestrelbay_test_support PkgConfig::XCB_TAP_TEST
)
