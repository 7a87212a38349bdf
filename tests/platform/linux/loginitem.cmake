pkg_check_modules(GIO_LOGINITEM_TEST REQUIRED IMPORTED_TARGET gio-unix-2.0)

kestrelbay_test(linux_loginitem_tests
    LABEL fast
    SOURCES linux/desktop/AutostartEntryTest.cpp linux/desktop/AutostartLoginItemTest.cpp
    LIBRARIES kestrelbay_back_end PkgConfig::GIO_LOGINITEM_TEST GTest::gtest_main
)
