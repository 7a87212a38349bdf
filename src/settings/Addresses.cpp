#include "settings/Addresses.h"

#include <QUrl>

#include "platform/Workspace.h"
#include "settings/L.h"

namespace kestrelbay {

namespace {

QString pageUrl(const QString &page) {
    return QUrl(page, QUrl::TolerantMode).toString(QUrl::FullyEncoded);
}

QString mailUrl(const QString &mailbox) {
    if (mailbox.isEmpty())
        return {};
    QUrl url;
    url.setScheme(QStringLiteral("mailto"));
    url.setPath(mailbox);
    return url.toString(QUrl::FullyEncoded);
}

}  // namespace

Addresses Addresses::of(const QString &downloadPage, const QString &deepLaunchHelpPage,
                        const QString &supportMail) {
    return {.downloadPage = pageUrl(downloadPage),
            .supportMail = mailUrl(supportMail),
            .deepLaunchHelpPage = pageUrl(deepLaunchHelpPage)};
}

Addresses Addresses::ofThisBuild() {
    return of(QStringLiteral(KESTRELBAY_DOWNLOAD_PAGE),
              QStringLiteral(KESTRELBAY_DEEP_LAUNCH_HELP_PAGE),
              QStringLiteral(KESTRELBAY_SUPPORT_MAIL));
}

void openAddress(const QString &address, Workspace &workspace,
                 const std::function<void(const QString &)> &showToast) {
    if (address.isEmpty())
        showToast(L::noAddress());
    else
        workspace.openUrl(address);
}

}  // namespace kestrelbay
