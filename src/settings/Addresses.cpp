#include "settings/Addresses.h"

#include <QString>

namespace kestrelbay::addresses {

QUrl downloadPage() {
    return {QStringLiteral(KESTRELBAY_DOWNLOAD_PAGE), QUrl::TolerantMode};
}

QUrl supportMail() {
    QUrl url;
    url.setScheme(QStringLiteral("mailto"));
    url.setPath(QStringLiteral(KESTRELBAY_SUPPORT_MAIL));
    return url;
}

QUrl deepLaunchHelpPage() {
    return {QStringLiteral(KESTRELBAY_DEEP_LAUNCH_HELP_PAGE), QUrl::TolerantMode};
}

}  // namespace kestrelbay::addresses
