# Everything in this tree is compiled the same way: warnings are errors, and the
# sanitizers, if any, are on in every target.
add_library(kestrelbay_settings INTERFACE)
target_compile_options(kestrelbay_settings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual
    -Wold-style-cast -Werror)
target_compile_definitions(kestrelbay_settings INTERFACE
    QT_NO_CAST_FROM_ASCII QT_NO_FOREACH QT_NO_KEYWORDS QT_STRICT_ITERATORS
    KESTRELBAY_VERSION="${PROJECT_VERSION}")
target_include_directories(kestrelbay_settings INTERFACE ${PROJECT_SOURCE_DIR}/src)

if(KESTRELBAY_SANITIZE)
    target_compile_options(kestrelbay_settings INTERFACE
        -fsanitize=${KESTRELBAY_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(kestrelbay_settings INTERFACE -fsanitize=${KESTRELBAY_SANITIZE})
endif()
