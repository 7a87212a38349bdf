kestrelbay_test(linux_services_tests
    LABEL fast
    SOURCES
        linux/DisplayFactsTest.cpp
        linux/LinuxPlatformFoldersTest.cpp
        linux/MemoryReleaseTest.cpp
        linux/desktop/CanberraSoundsTest.cpp
        linux/desktop/JsonUserDefaultsTest.cpp
        linux/desktop/SyslogLogTest.cpp
    LIBRARIES kestrelbay_back_end kestrelbay_test_support GTest::gtest_main util
)
target_compile_definitions(linux_services_tests PRIVATE
    KESTRELBAY_JUMP_WAV="${PROJECT_SOURCE_DIR}/resources/sounds/Jump.wav")
