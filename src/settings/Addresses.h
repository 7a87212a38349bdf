#pragma once

#include <QString>

namespace kestrelbay::addresses {

/// URLs, chosen when the program is built, by the CMake variables KESTRELBAY_DOWNLOAD_PAGE,
/// KESTRELBAY_SUPPORT_MAIL and KESTRELBAY_DEEP_LAUNCH_HELP_PAGE.
[[nodiscard]] QString downloadPage();
/// A mailto: one.
[[nodiscard]] QString supportMail();
[[nodiscard]] QString deepLaunchHelpPage();

}  // namespace kestrelbay::addresses
