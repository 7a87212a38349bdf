# What "cpack -G DragNDrop" makes: a disk image with the program and a link to the folder that it
# is to be dragged to. Included last, when every install rule is known.
set(CPACK_PACKAGE_NAME KestrelBay)
set(CPACK_PACKAGE_VENDOR "The KestrelBay authors")
set(CPACK_PACKAGE_FILE_NAME KestrelBay-${PROJECT_VERSION}-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_GENERATOR DragNDrop)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_DMG_VOLUME_NAME KestrelBay)
# Signed where it is packed from: to copy a bundle is not to change it, but Qt is deployed, and
# so changed, by each installation.
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/sign-staged.cmake)

include(CPack)
