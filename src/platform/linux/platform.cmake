target_sources(kestrelbay_platform PRIVATE
    LinuxPlatform.cpp
)
