# Makes the target kestrelbay the bundle KestrelBay.app, with its icons, and has
# "cmake --install" put Qt into it. Included beside the target: what is generated
# for a target has to be made in its folder.
set(mac_packaging ${CMAKE_CURRENT_LIST_DIR})

find_program(RSVG_CONVERT rsvg-convert REQUIRED)
find_program(ICONUTIL iconutil REQUIRED)
mark_as_advanced(RSVG_CONVERT ICONUTIL)

# The sizes and names that iconutil knows: points, pixels, file name.
set(app_icon ${mac_packaging}/../../resources/icons/org.kestrelbay.KestrelBay.svg)
set(icon_set ${CMAKE_CURRENT_BINARY_DIR}/KestrelBay.iconset)
set(icon_files)
foreach(points IN ITEMS 16 32 128 256 512)
    math(EXPR doubled "2 * ${points}")
    foreach(file IN ITEMS "${points}:icon_${points}x${points}" "${doubled}:icon_${points}x${points}@2x")
        string(REGEX MATCH "^([0-9]+):(.+)$" matched ${file})
        set(pixels ${CMAKE_MATCH_1})
        set(png ${icon_set}/${CMAKE_MATCH_2}.png)
        add_custom_command(OUTPUT ${png}
            COMMAND ${CMAKE_COMMAND} -E make_directory ${icon_set}
            COMMAND ${RSVG_CONVERT} --width ${pixels} --height ${pixels} --output ${png} ${app_icon}
            DEPENDS ${app_icon}
            VERBATIM)
        list(APPEND icon_files ${png})
    endforeach()
endforeach()
set(icns ${CMAKE_CURRENT_BINARY_DIR}/KestrelBay.icns)
add_custom_command(OUTPUT ${icns}
    COMMAND ${ICONUTIL} --convert icns --output ${icns} ${icon_set}
    DEPENDS ${icon_files}
    COMMENT "Drawing KestrelBay.icns"
    VERBATIM)
set_source_files_properties(${icns} PROPERTIES MACOSX_PACKAGE_LOCATION Resources)
target_sources(kestrelbay PRIVATE ${icns})

set_target_properties(kestrelbay PROPERTIES
    OUTPUT_NAME KestrelBay
    MACOSX_BUNDLE ON
    MACOSX_BUNDLE_INFO_PLIST ${mac_packaging}/Info.plist.in
    # Where macdeployqt puts the libraries.
    INSTALL_RPATH @executable_path/../Frameworks)

install(TARGETS kestrelbay BUNDLE DESTINATION .)

# Not Qt's own deployment command: its arguments changed from Qt 6.4 to 6.5.
find_program(MACDEPLOYQT macdeployqt REQUIRED
    HINTS ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_BINS})
mark_as_advanced(MACDEPLOYQT)
install(CODE "
    set(installed \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/KestrelBay.app\")
    execute_process(COMMAND \"${MACDEPLOYQT}\" \"\${installed}\" -verbose=1
        COMMAND_ERROR_IS_FATAL ANY)
    execute_process(COMMAND \"${mac_packaging}/check\" \"\${installed}\"
        COMMAND_ERROR_IS_FATAL ANY)")
