# Everything in this tree is compiled the same way: warnings are errors, and the
# sanitizers, if any, are on in every target.
add_library(kestrelbay_compiler_settings INTERFACE)
target_compile_options(kestrelbay_compiler_settings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual
    -Wold-style-cast -Werror)
# GCC 12 sees overlapping copies inside std::string that are not there (its bug 105651).
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(kestrelbay_compiler_settings INTERFACE -Wno-restrict)
endif()
# To GCC a joined source is a header, in which a class must not have members of a type that only
# its own source knows.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_UNITY_BUILD)
    target_compile_options(kestrelbay_compiler_settings INTERFACE -Wno-subobject-linkage)
endif()
target_compile_definitions(kestrelbay_compiler_settings INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_FOREACH QT_NO_KEYWORDS QT_STRICT_ITERATORS
    KESTRELBAY_VERSION="${PROJECT_VERSION}")
target_include_directories(kestrelbay_compiler_settings INTERFACE ${PROJECT_SOURCE_DIR}/src)

# In all targets, of which some would have them by themselves: those that share precompiled
# headers have to agree.
target_compile_options(kestrelbay_compiler_settings INTERFACE -fPIC -pthread)

if(KESTRELBAY_SANITIZE)
    target_compile_options(kestrelbay_compiler_settings INTERFACE
        -fsanitize=${KESTRELBAY_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(kestrelbay_compiler_settings INTERFACE -fsanitize=${KESTRELBAY_SANITIZE})
    if(KESTRELBAY_SANITIZE STREQUAL "thread" AND NOT APPLE)
        target_link_options(kestrelbay_compiler_settings INTERFACE
            -Wl,--version-script=${PROJECT_SOURCE_DIR}/cmake/sanitizers/hidden.map)
    endif()
    if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
        target_compile_options(kestrelbay_compiler_settings INTERFACE
            -fsanitize-ignorelist=${PROJECT_SOURCE_DIR}/cmake/sanitizers/ignore.txt)
    endif()
endif()
