target_sources(kestrelbay_platform PRIVATE
    CanberraSounds.cpp
    JsonUserDefaults.cpp
    SoundFiles.cpp
    SyslogLog.cpp
)

# Shared data is found from the executable, so that an installed tree can be moved.
file(RELATIVE_PATH KESTRELBAY_DATA_FROM_BIN
    ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_DATADIR})
set_source_files_properties(${CMAKE_CURRENT_LIST_DIR}/SoundFiles.cpp
    TARGET_DIRECTORY kestrelbay_platform PROPERTIES
    COMPILE_DEFINITIONS KESTRELBAY_DATA_FROM_BIN="${KESTRELBAY_DATA_FROM_BIN}")
