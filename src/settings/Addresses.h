#pragma once

#include <QUrl>

namespace kestrelbay::addresses {

/// Chosen when the program is built, by the CMake variables KESTRELBAY_DOWNLOAD_PAGE,
/// KESTRELBAY_SUPPORT_MAIL and KESTRELBAY_DEEP_LAUNCH_HELP_PAGE.
[[nodiscard]] QUrl downloadPage();
/// A mailto: URL.
[[nodiscard]] QUrl supportMail();
[[nodiscard]] QUrl deepLaunchHelpPage();

}  // namespace kestrelbay::addresses
