target_sources(kestrelbay_platform PRIVATE
    LaunchAgent.cpp
    MacLoginItem.mm
    MacNativeWindow.mm
    MacPlatform.mm
    MacSystemSettings.mm
    MacSystemSounds.mm
    MacSystemSymbols.mm
    MacUserDefaults.mm
    NSImages.mm
    ServiceLoginItem.mm
    UnifiedLog.cpp
)
if(APPLE)
    target_link_libraries(kestrelbay_platform PRIVATE
        "-framework QuartzCore"
        "-framework ServiceManagement"
    )
endif()
