kestrelbay_test(linux_plasma_tests
    LABEL fast
    SOURCES
        linux/wayland/plasma/plasmaMain.cpp
        linux/wayland/plasma/FakeKGlobalAccel.cpp
        linux/wayland/plasma/KGlobalAccelEventTapTest.cpp
        linux/wayland/plasma/KeyNumbersTest.cpp
        linux/wayland/plasma/windows/FakeKWin.cpp
        linux/wayland/plasma/windows/KWinLineTest.cpp
        linux/wayland/plasma/windows/WindowListTest.cpp
    LIBRARIES kestrelbay_back_end kestrelbay_test_support GTest::gmock)
