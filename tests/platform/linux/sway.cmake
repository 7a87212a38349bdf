kestrelbay_test(linux_sway_tests
    LABEL fast
    SOURCES
        linux/wayland/sway/FakeSway.cpp
        linux/wayland/sway/IpcMessageTest.cpp
        linux/wayland/sway/SwayBindingTest.cpp
        linux/wayland/sway/SwayIpcTest.cpp
        linux/wayland/sway/UserBindingsTest.cpp
    LIBRARIES kestrelbay_back_end GTest::gtest_main)
