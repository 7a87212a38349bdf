# Qt's headers take most of the time that a file takes to compile, so they are read once for
# all targets that see the same modules. Files include what they use all the same: builds for
# macOS go without this.
#
# kestrelbay_precompiled(KIND HEADERS … LIBRARIES …) makes the targets of a kind share
# theirs: kestrelbay_precompile(TARGET KIND).
function(kestrelbay_precompiled kind)
    # Targets with Objective-C++ would need one for each language.
    if(APPLE OR KESTRELBAY_MACOS_CHECK)
        return()
    endif()
    cmake_parse_arguments(P "" "" "HEADERS;LIBRARIES" ${ARGN})
    set(source ${PROJECT_BINARY_DIR}/precompiled/${kind}.cpp)
    file(CONFIGURE OUTPUT ${source} CONTENT "")
    add_library(kestrelbay_precompiled_${kind} OBJECT ${source})
    target_link_libraries(kestrelbay_precompiled_${kind} PRIVATE kestrelbay_compiler_settings ${P_LIBRARIES})
    target_precompile_headers(kestrelbay_precompiled_${kind} PRIVATE ${P_HEADERS})
endfunction()

function(kestrelbay_precompile target kind)
    if(TARGET kestrelbay_precompiled_${kind})
        target_precompile_headers(${target} REUSE_FROM kestrelbay_precompiled_${kind})
    endif()
endfunction()

# What many files include, not whole modules: g++ takes a second more for each file that
# loads those.
set(core_headers
    <algorithm> <array> <chrono> <cstdint> <functional> <map> <memory> <optional> <set> <string>
    <utility> <vector>
    <QByteArray> <QDir> <QFile> <QFileInfo> <QList> <QObject> <QString> <QStringList> <QUrl>)
set(widget_headers
    ${core_headers} <QApplication> <QBoxLayout> <QIcon> <QImage> <QKeyEvent> <QLabel> <QPainter>
    <QPixmap> <QPointer> <QPushButton> <QScreen> <QTimer> <QWidget>)
kestrelbay_precompiled(core HEADERS ${core_headers} LIBRARIES Qt6::Core)
kestrelbay_precompiled(platform HEADERS ${core_headers} <QIcon> <QImage> <QSet> <QTimer>
    LIBRARIES Qt6::Gui)
kestrelbay_precompiled(widgets HEADERS ${widget_headers} LIBRARIES Qt6::Widgets)
if(KESTRELBAY_STORIES)
    kestrelbay_precompiled(stories
        HEADERS ${core_headers} <QColor> <QDBusConnection> <QDBusMessage> <QImage> <QJsonObject>
            <QProcessEnvironment> <QRect> <QTemporaryDir>
        LIBRARIES Qt6::DBus Qt6::Gui)
endif()
if(KESTRELBAY_TESTS)
    kestrelbay_precompiled(tests
        HEADERS ${core_headers} <QTemporaryDir> <gmock/gmock.h> <gtest/gtest.h>
        LIBRARIES Qt6::Core GTest::gmock GTest::gtest)
    kestrelbay_precompiled(view_tests
        HEADERS ${widget_headers} <QTemporaryDir> <gmock/gmock.h> <gtest/gtest.h>
        LIBRARIES Qt6::Widgets GTest::gmock GTest::gtest)
endif()
