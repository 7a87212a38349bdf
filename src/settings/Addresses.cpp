#include "settings/Addresses.h"

#include <QString>

namespace kestrelbay::addresses {

QUrl downloadPage() {
    return QUrl(QStringLiteral(KESTRELBAY_DOWNLOAD_PAGE));
}

QUrl supportMail() {
    QUrl url;
    url.setScheme(QStringLiteral("mailto"));
    url.setPath(QStringLiteral(KESTRELBAY_SUPPORT_MAIL));
    return url;
}

QUrl deepLaunchHelpPage() {
    return QUrl(QStringLiteral(KESTRELBAY_DEEP_LAUNCH_HELP_PAGE));
}

}  // namespace kestrelbay::addresses
