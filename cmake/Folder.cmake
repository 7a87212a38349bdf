# kestrelbay_folder(KIND [MOC] SOURCES … [USES TARGET …] [PRIVATELY TARGET …]): the library of
# this folder below src/, named after its path: src/ui/look is kestrelbay_ui_look. One library a
# folder, so that the linker, too, knows who is below whom. USES are seen by its users as well.
#
# KIND is core (QtCore only), platform (QtGui too) or widgets.
function(kestrelbay_folder kind)
    cmake_parse_arguments(F "MOC" "" "SOURCES;USES;PRIVATELY" ${ARGN})
    cmake_path(RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR BASE_DIRECTORY ${PROJECT_SOURCE_DIR}/src
        OUTPUT_VARIABLE path)
    string(REPLACE "/" "_" name ${path})
    set(target kestrelbay_${name})
    add_library(${target} STATIC ${F_SOURCES})
    target_link_libraries(${target}
        PUBLIC kestrelbay_compiler_settings Qt6::Core ${F_USES}
        PRIVATE ${F_PRIVATELY})
    if(kind STREQUAL "platform")
        target_link_libraries(${target} PUBLIC Qt6::Gui)
    elseif(kind STREQUAL "widgets")
        target_link_libraries(${target} PUBLIC Qt6::Widgets)
    endif()
    if(F_MOC OR kind STREQUAL "widgets")
        set_target_properties(${target} PROPERTIES AUTOMOC ON)
    endif()
    kestrelbay_precompile(${target} ${kind})
    set_property(GLOBAL APPEND PROPERTY KESTRELBAY_${kind}_FOLDERS ${target})
endfunction()
