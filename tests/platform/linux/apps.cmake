pkg_check_modules(GIO_TEST REQUIRED IMPORTED_TARGET gio-unix-2.0)
pkg_check_modules(XCB_TEST REQUIRED IMPORTED_TARGET xcb xcb-xtest)

kestrelbay_test(linux_apps_fast_tests LABEL fast
    SOURCES
        linux/x11/windows/FocusOrderTest.cpp
        linux/x11/windows/UseOrderTest.cpp
        linux/x11/windows/WindowStatesTest.cpp
        linux/applications/matching/ApplicationGroupsTest.cpp
        linux/applications/matching/ApplicationMatchTest.cpp
        linux/applications/entries/CommandLineApplicationTest.cpp
        linux/applications/entries/DesktopEntryApplicationTest.cpp
        linux/applications/launching/ExecLaunchTest.cpp
        linux/applications/launching/LaunchesTest.cpp
        linux/applications/icons/InstalledApplicationsTest.cpp
        linux/applications/matching/ProcessApplicationTest.cpp
        linux/applications/matching/TerminalsTest.cpp
        linux/apps/fastMain.cpp
    LIBRARIES kestrelbay_back_end PkgConfig::GIO_TEST)

add_executable(linux_apps_client linux/apps/client.cpp)
target_link_libraries(linux_apps_client PRIVATE kestrelbay_compiler_settings PkgConfig::XCB_TEST)

kestrelbay_test(linux_apps_tests LABEL display
    SOURCES
        WorkspaceContract.cpp
        linux/applications/icons/CatalogApplicationTest.cpp
        linux/apps/InterpretedProgramTest.cpp
        linux/apps/LinuxWorkspaceIdentityTest.cpp
        linux/apps/LinuxWorkspaceTest.cpp
        linux/apps/ManagerChangesTest.cpp
        linux/apps/OpenedFileTest.cpp
        linux/apps/PressesUnderManagersTest.cpp
        linux/apps/SlowStartTest.cpp
        linux/apps/TerminalProgramsTest.cpp
        linux/apps/UnheardFocusTest.cpp
        linux/apps/WindowNewsTest.cpp
        linux/apps/WindowRoundTripsTest.cpp
        linux/apps/WindowStateTest.cpp
        linux/apps/WorkspaceContractLinuxTest.cpp
        linux/apps/WorkspaceLaunchTest.cpp
        linux/apps/bus.cpp
        linux/apps/desktop.cpp
        linux/apps/main.cpp
        linux/apps/turns.cpp
    LIBRARIES kestrelbay_back_end kestrelbay_launcher kestrelbay_test_support PkgConfig::GIO_TEST)
target_compile_definitions(linux_apps_tests PRIVATE
    KESTRELBAY_APPS_CLIENT="$<TARGET_FILE:linux_apps_client>")
add_dependencies(linux_apps_tests linux_apps_client)
