target_sources(kestrelbay_platform PRIVATE
    AutostartEntry.cpp
    AutostartLoginItem.cpp
)
