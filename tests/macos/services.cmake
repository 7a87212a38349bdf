target_sources(macos_tests PRIVATE
    LaunchAgentTest.cpp
    MacKeyboardLayoutTest.cpp
    MacLoginItemTest.mm
    MacNativeWindowTest.mm
    MacPlatformTest.mm
    MacReopeningTest.mm
    MacServicesTest.mm
    MacSystemAlertsTest.mm
    MacSystemSettingsTest.mm
    MacSystemTintsTest.mm
    MacUserDefaultsTest.mm
    NoSessionBusTest.cpp
    NSImagesTest.mm
    fakes/Alerts.mm
    fakes/AppleEvents.mm
    fakes/Colors.mm
    fakes/Images.mm
    fakes/InputSources.mm
    fakes/Services.mm
    fakes/Threads.cpp
    fakes/Windows.mm
)

target_link_libraries(macos_tests PRIVATE kestrelbay_app_instance)

find_package(Python3 REQUIRED COMPONENTS Interpreter)
foreach(test IN ITEMS bootstrap bundle check image sign)
    add_test(NAME macos_${test}_test
        COMMAND Python3::Interpreter -B ${CMAKE_CURRENT_SOURCE_DIR}/bundle/${test}_test.py
            "$<$<IN_LIST:${test},bundle;image>:${CMAKE_COMMAND}>"
        COMMAND_EXPAND_LISTS)
    set_tests_properties(macos_${test}_test PROPERTIES LABELS fast TIMEOUT 120)
endforeach()
add_subdirectory(declarations)
