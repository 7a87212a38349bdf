# What "cpack -G DEB" makes. Included last, when every install rule is known.
set(CPACK_PACKAGE_NAME kestrelbay)
set(CPACK_PACKAGE_VENDOR "The KestrelBay authors")
set(CPACK_PACKAGE_CONTACT "The KestrelBay authors <authors@kestrelbay.invalid>")
set(CPACK_PACKAGE_HOMEPAGE_URL "https://kestrelbay.invalid/")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "bind global hotkeys to applications")
set(CPACK_PACKAGE_DESCRIPTION
    "KestrelBay waits in the system tray for the hotkeys of its rules. A hotkey
starts its application or brings it forward; pressed again, it leaves the
application there, hides it or goes to its next window. Left and right
modifier keys are told apart, and a hotkey can also open a URL or a file, or
pass arguments.
.
It needs a session of X11, or one of sway, Plasma or GNOME on Wayland.")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
# Otherwise what is installed would take the folder that is packed for its place.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_GENERATOR DEB)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${CPACK_PACKAGE_CONTACT}")
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Loaded by Qt at run time, so that the linker does not know of them. The plugin for SVG was
# within the library's package before it got its own.
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "qt6-svg-plugins | libqt6svg6 (<< 6.7.2-5~), hicolor-icon-theme")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "qt6-translations-l10n, sound-theme-freedesktop")
# Shows windows in a Wayland session that has no X server.
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "qt6-wayland")

include(CPack)
