kestrelbay_test(linux_gnome_tests
    LABEL fast
    SOURCES
        linux/SessionSourcesTest.cpp
        linux/wayland/sway/swayMain.cpp
        linux/wayland/gnome/FakeExtension.cpp
        linux/wayland/gnome/GnomeEventTapTest.cpp
        linux/wayland/gnome/GnomeShellInstallationTest.cpp
        linux/wayland/gnome/windows/GnomeDesktopTest.cpp
    LIBRARIES kestrelbay_back_end kestrelbay_fakes kestrelbay_test_support GTest::gmock)
