kestrelbay_test(linux_sway_tests
    LABEL fast
    SOURCES
        linux/wayland/sway/swayMain.cpp
        linux/wayland/BindingsGuardTest.cpp
        linux/wayland/recording/OwnWindowKeysTest.cpp
        linux/wayland/sway/FakeSway.cpp
        linux/wayland/sway/IpcMessageTest.cpp
        linux/wayland/sway/SwayBindingTest.cpp
        linux/wayland/sway/SwayEventTapTest.cpp
        linux/wayland/sway/SwayIpcTest.cpp
        linux/wayland/sway/UserBindingsTest.cpp
        linux/wayland/sway/windows/KeptWindowsTest.cpp
        linux/wayland/sway/windows/SwayDesktopNewsTest.cpp
        linux/wayland/sway/windows/SwayDesktopTest.cpp
        linux/wayland/sway/windows/SwayTreeTest.cpp
    LIBRARIES kestrelbay_back_end kestrelbay_test_support GTest::gmock)
