#pragma once

#include <functional>

#include <QString>

namespace kestrelbay {

class Workspace;

/// Where the program leads its users: URLs, empty where it was built without.
struct Addresses {
    QString downloadPage;
    /// A mailto: one.
    QString supportMail;
    QString deepLaunchHelpPage;

    /// The last is a bare mail address.
    [[nodiscard]] static Addresses of(const QString &downloadPage,
                                      const QString &deepLaunchHelpPage,
                                      const QString &supportMail);
    /// Those that the CMake variables KESTRELBAY_DOWNLOAD_PAGE,
    /// KESTRELBAY_DEEP_LAUNCH_HELP_PAGE and KESTRELBAY_SUPPORT_MAIL name.
    [[nodiscard]] static Addresses ofThisBuild();
};

/// Opens one of them, or has a notice say that this build has none.
void openAddress(const QString &address, Workspace &workspace,
                 const std::function<void(const QString &)> &showToast);

}  // namespace kestrelbay
