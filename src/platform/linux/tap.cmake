target_sources(kestrelbay_platform PRIVATE
    KeyCodeTable.cpp
    KeyGrabber.cpp
    KeyGrabPlan.cpp
    KeyboardState.cpp
    TapOwnership.cpp
    XEventTap.cpp
)
set_target_properties(kestrelbay_platform PROPERTIES AUTOMOC ON)
