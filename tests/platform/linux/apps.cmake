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
        linux/appsFastMain.cpp
    LIBRARIES kestrelbay_back_end PkgConfig::GIO_TEST)

add_executable(linux_apps_client linux/appsClient.cpp)
target_link_libraries(linux_apps_client PRIVATE kestrelbay_compiler_settings PkgConfig::XCB_TEST)

kestrelbay_test(linux_apps_tests LABEL display
    SOURCES
        WorkspaceContract.cpp
        linux/applications/icons/CatalogApplicationTest.cpp
        linux/InterpretedProgramTest.cpp
        linux/LinuxWorkspaceIdentityTest.cpp
        linux/LinuxWorkspaceTest.cpp
        linux/OpenedFileTest.cpp
        linux/PressesUnderManagersTest.cpp
        linux/SlowStartTest.cpp
        linux/TerminalProgramsTest.cpp
        linux/UnheardFocusTest.cpp
        linux/WindowNewsTest.cpp
        linux/WindowRoundTripsTest.cpp
        linux/WindowStateTest.cpp
        linux/WorkspaceContractLinuxTest.cpp
        linux/WorkspaceLaunchTest.cpp
        linux/appsBus.cpp
        linux/appsDesktop.cpp
        linux/appsMain.cpp
        linux/appsTurns.cpp
    LIBRARIES kestrelbay_back_end kestrelbay_launcher kestrelbay_test_support PkgConfig::GIO_TEST)
target_compile_definitions(linux_apps_tests PRIVATE
    KESTRELBAY_APPS_CLIENT="$<TARGET_FILE:linux_apps_client>")
add_dependencies(linux_apps_tests linux_apps_client)
