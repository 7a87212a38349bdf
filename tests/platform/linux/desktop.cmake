pkg_check_modules(GIO_DESKTOP_TEST REQUIRED IMPORTED_TARGET gio-unix-2.0)
find_program(KESTRELBAY_COMPILE_SCHEMAS glib-compile-schemas REQUIRED)

set(KESTRELBAY_TEST_SCHEMAS ${CMAKE_CURRENT_BINARY_DIR}/schemas)
add_custom_command(OUTPUT ${KESTRELBAY_TEST_SCHEMAS}/gschemas.compiled
    COMMAND ${CMAKE_COMMAND} -E make_directory ${KESTRELBAY_TEST_SCHEMAS}
    COMMAND ${KESTRELBAY_COMPILE_SCHEMAS} --strict --targetdir=${KESTRELBAY_TEST_SCHEMAS}
        ${CMAKE_CURRENT_LIST_DIR}/desktop/schemas
    DEPENDS ${CMAKE_CURRENT_LIST_DIR}/desktop/schemas/org.gnome.desktop.interface.gschema.xml
    VERBATIM)

kestrelbay_test(linux_desktop_tests LABEL display
    SOURCES
        linux/LinuxPlatformDiagnosticsTest.cpp
        linux/bus/PrivateSessionBusTest.cpp
        linux/bus/SessionBusTest.cpp
        linux/desktop/DesktopScreenLockTest.cpp
        linux/desktop/LinuxSystemTrayTest.cpp
        linux/desktop/PortalSystemSettingsTest.cpp
        linux/desktop/QtNativeWindowTest.cpp
        linux/desktop/XEmbedTrayTest.cpp
        linux/wayland/sway/FakeSway.cpp
        linux/x11/panels/X11NativeWindowManagedTest.cpp
        linux/x11/panels/X11NativeWindowTest.cpp
        linux/apps/desktop.cpp
        linux/desktopMain.cpp
        ${KESTRELBAY_TEST_SCHEMAS}/gschemas.compiled
    LIBRARIES kestrelbay_back_end kestrelbay_fakes kestrelbay_test_support
        PkgConfig::GIO_DESKTOP_TEST)
target_compile_definitions(linux_desktop_tests PRIVATE
    KESTRELBAY_APPS_CLIENT="$<TARGET_FILE:linux_apps_client>"
    KESTRELBAY_FAKE_SETTINGS_PORTAL="$<TARGET_FILE:fake_settings_portal>"
    KESTRELBAY_TEST_SCHEMAS="${KESTRELBAY_TEST_SCHEMAS}")
add_dependencies(linux_desktop_tests fake_settings_portal)
