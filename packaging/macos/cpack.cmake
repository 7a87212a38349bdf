# What "cpack -G DragNDrop" makes: a disk image with the program and a link to the folder that it
# is to be dragged to. Included last, when every install rule is known.
set(CPACK_PACKAGE_NAME KestrelBay)
set(CPACK_PACKAGE_VENDOR "The KestrelBay authors")
set(CPACK_PACKAGE_FILE_NAME KestrelBay-${PROJECT_VERSION}-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_GENERATOR DragNDrop)
set(CPACK_VERBATIM_VARIABLES ON)
# One image, whatever components the packages that are built with may bring along.
set(CPACK_MONOLITHIC_INSTALL ON)
set(CPACK_DMG_VOLUME_NAME KestrelBay)
# Only here, as cpack installs the bundle anew, and deploying Qt breaks signatures.
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/sign-staged.cmake)

include(CPack)
