#pragma once

// Stands for <os/availability.h>, of which it takes one platform.
#define API_AVAILABLE(platform) __attribute__((availability(KESTRELBAY_##platform)))
#define KESTRELBAY_macos(version) macos, introduced = version
