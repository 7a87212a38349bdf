target_sources(kestrelbay_platform PRIVATE
    BusListener.cpp
    DesktopColorScheme.cpp
    DisplayDiagnostics.cpp
    FloatingPanels.cpp
    GrabFocusFilter.cpp
    LinuxStatusArea.cpp
    MainThreadInbox.cpp
    PortalSystemSettings.cpp
    ServerClock.cpp
    WindowForward.cpp
    X11NativeWindow.cpp
    XEmbedTray.cpp
)
