target_sources(macos_tests PRIVATE
    LaunchAgentTest.cpp
    MacKeyboardLayoutTest.cpp
    MacLoginItemTest.mm
    MacNativeWindowTest.mm
    MacPlatformTest.mm
    MacServicesTest.mm
    MacSystemSettingsTest.mm
    MacSystemTintsTest.mm
    MacUserDefaultsTest.mm
    NSImagesTest.mm
    fakes/Colors.mm
    fakes/Images.mm
    fakes/InputSources.mm
    fakes/Services.mm
    fakes/Windows.mm
)

find_package(Python3 REQUIRED COMPONENTS Interpreter)
add_test(NAME macos_bundle_test
    COMMAND Python3::Interpreter ${CMAKE_CURRENT_SOURCE_DIR}/bundle/bundle_test.py ${CMAKE_COMMAND})
add_test(NAME macos_bundle_check_test
    COMMAND Python3::Interpreter ${CMAKE_CURRENT_SOURCE_DIR}/bundle/check_test.py)
set_tests_properties(macos_bundle_test macos_bundle_check_test PROPERTIES LABELS fast TIMEOUT 120)
add_subdirectory(declarations)
