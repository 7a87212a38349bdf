kestrelbay_test(linux_sway_tests
    LABEL fast
    SOURCES
        linux/wayland/sway/IpcMessageTest.cpp
    LIBRARIES kestrelbay_back_end GTest::gtest_main)
