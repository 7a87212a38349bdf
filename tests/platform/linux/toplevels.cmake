pkg_check_modules(WAYLAND_SERVER REQUIRED IMPORTED_TARGET wayland-server)

kestrelbay_test(linux_toplevels_tests
    LABEL fast
    SOURCES
        linux/wayland/keymap/WaylandKeymapTest.cpp
        linux/wayland/recording/FocusCompositor.cpp
        linux/wayland/recording/ShortcutsInhibitorTest.cpp
        linux/wayland/server/ServerThread.cpp
        linux/wayland/toplevels/EventPauseTest.cpp
        linux/wayland/toplevels/FakeCompositor.cpp
        linux/wayland/toplevels/FoundAgainTest.cpp
        linux/wayland/toplevels/ToplevelDesktopTest.cpp
        linux/wayland/windows/DesktopApplicationTest.cpp
    LIBRARIES kestrelbay_back_end kestrelbay_test_support PkgConfig::WAYLAND_SERVER GTest::gmock_main)
kestrelbay_wayland_server_protocol(linux_toplevels_tests
    ${PROJECT_SOURCE_DIR}/src/platform/linux/wayland/toplevels/protocols/wlr-foreign-toplevel-management-unstable-v1.xml)
kestrelbay_wayland_server_protocol(linux_toplevels_tests
    ${WAYLAND_PROTOCOLS_DIR}/unstable/keyboard-shortcuts-inhibit/keyboard-shortcuts-inhibit-unstable-v1.xml)

if(KESTRELBAY_STORIES)
    kestrelbay_test(linux_compositors_tests
        LABEL display
        SOURCES
            linux/wayland/toplevels/CompositorSession.cpp
            linux/wayland/toplevels/ToplevelsUnderCompositorsTest.cpp
        LIBRARIES kestrelbay_back_end kestrelbay_desktop)
endif()
