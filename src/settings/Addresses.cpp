#include "settings/Addresses.h"

#include <QUrl>

namespace kestrelbay::addresses {

namespace {

QString encoded(const QUrl &url) {
    return url.toString(QUrl::FullyEncoded);
}

}  // namespace

QString downloadPage() {
    return encoded({QStringLiteral(KESTRELBAY_DOWNLOAD_PAGE), QUrl::TolerantMode});
}

QString supportMail() {
    QUrl url;
    url.setScheme(QStringLiteral("mailto"));
    url.setPath(QStringLiteral(KESTRELBAY_SUPPORT_MAIL));
    return encoded(url);
}

QString deepLaunchHelpPage() {
    return encoded({QStringLiteral(KESTRELBAY_DEEP_LAUNCH_HELP_PAGE), QUrl::TolerantMode});
}

}  // namespace kestrelbay::addresses
