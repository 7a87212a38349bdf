find_package(PkgConfig REQUIRED)
find_program(WAYLAND_SCANNER wayland-scanner REQUIRED)
pkg_get_variable(WAYLAND_PROTOCOLS_DIR wayland-protocols pkgdatadir)

# kestrelbay_wayland_protocol(TARGET XML): the client's side of a Wayland protocol. <NAME.h> is for
# all sources of the target, and <NAME-code.h> for one of them: the scanner's code is C++ as well,
# once the header has declared what it defines.
function(kestrelbay_wayland_protocol target xml)
    kestrelbay_scan_protocol(${target} ${xml} client-header .h)
    kestrelbay_scan_protocol(${target} ${xml} private-code -code.h)
endfunction()

# kestrelbay_wayland_server_protocol(TARGET XML): the other side, for a compositor of a test that
# is linked with the client's. <NAME-server.h>.
function(kestrelbay_wayland_server_protocol target xml)
    kestrelbay_scan_protocol(${target} ${xml} server-header -server.h)
endfunction()

function(kestrelbay_scan_protocol target xml what suffix)
    cmake_path(ABSOLUTE_PATH xml)
    cmake_path(GET xml STEM LAST_ONLY name)
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/protocols)
    set(made ${folder}/${name}${suffix})
    file(MAKE_DIRECTORY ${folder})
    add_custom_command(OUTPUT ${made}
        COMMAND ${WAYLAND_SCANNER} ${what} ${xml} ${made}
        DEPENDS ${xml} VERBATIM)
    target_sources(${target} PRIVATE ${made})
    target_include_directories(${target} SYSTEM PRIVATE ${folder})
endfunction()
