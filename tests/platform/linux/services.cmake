kestrelbay_test(linux_services_tests
    LABEL fast
    SOURCES
        linux/CanberraSoundsTest.cpp
        linux/JsonUserDefaultsTest.cpp
        linux/SyslogLogTest.cpp
    LIBRARIES kestrelbay_back_end GTest::gtest_main util
)
target_compile_definitions(linux_services_tests PRIVATE
    KESTRELBAY_JUMP_WAV="${PROJECT_SOURCE_DIR}/resources/sounds/Jump.wav")
