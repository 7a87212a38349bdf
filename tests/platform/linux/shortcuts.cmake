set(KESTRELBAY_SHORTCUT_SCHEMAS ${CMAKE_CURRENT_BINARY_DIR}/shortcutSchemas)
add_custom_command(OUTPUT ${KESTRELBAY_SHORTCUT_SCHEMAS}/gschemas.compiled
    COMMAND ${CMAKE_COMMAND} -E make_directory ${KESTRELBAY_SHORTCUT_SCHEMAS}
    COMMAND ${KESTRELBAY_COMPILE_SCHEMAS} --strict --targetdir=${KESTRELBAY_SHORTCUT_SCHEMAS}
        ${CMAKE_CURRENT_LIST_DIR}/shortcuts/schemas
    DEPENDS ${CMAKE_CURRENT_LIST_DIR}/shortcuts/schemas/shortcuts.gschema.xml
    VERBATIM)

kestrelbay_test(linux_shortcuts_tests LABEL display
    SOURCES
        linux/shortcuts/AcceleratorTest.cpp
        linux/shortcuts/DesktopHotkeyHoldersTest.cpp
        linux/shortcuts/GSettingsShortcutsTest.cpp
        linux/shortcuts/KdeShortcutsTest.cpp
        linux/shortcuts/XfconfShortcutsTest.cpp
        linux/desktopMain.cpp
        ${KESTRELBAY_SHORTCUT_SCHEMAS}/gschemas.compiled
    LIBRARIES kestrelbay_back_end kestrelbay_test_support PkgConfig::GIO_DESKTOP_TEST
)
target_compile_definitions(linux_shortcuts_tests PRIVATE
    KESTRELBAY_TEST_SCHEMAS="${KESTRELBAY_SHORTCUT_SCHEMAS}")
