kestrelbay_test(linux_portal_tests
    LABEL fast
    SOURCES
        linux/wayland/sway/swayMain.cpp
        linux/wayland/portal/PortalEventTapTest.cpp
        linux/wayland/portal/PreferredTriggerTest.cpp
    LIBRARIES kestrelbay_back_end kestrelbay_test_support GTest::gmock)
