# Where the program leads its users. Without one its button says that the build has none.
set(KESTRELBAY_DOWNLOAD_PAGE "" CACHE STRING
    "URL of the page from which users download new versions")
set(KESTRELBAY_SUPPORT_MAIL "" CACHE STRING "Mail address for questions and feedback")
set(KESTRELBAY_DEEP_LAUNCH_HELP_PAGE "" CACHE STRING "URL of the page that explains deep launch")

foreach(address IN ITEMS DOWNLOAD_PAGE SUPPORT_MAIL DEEP_LAUNCH_HELP_PAGE)
    if(CMAKE_BUILD_TYPE STREQUAL "Release" AND "${KESTRELBAY_${address}}" STREQUAL "")
        message(WARNING "KESTRELBAY_${address} is not set: a button will have nothing to open. "
            "CONTRIBUTING.md says how to set it.")
    endif()
endforeach()
