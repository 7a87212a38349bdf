#include "platform/linux/applications/icons/IconNames.h"

#include <algorithm>

#include <QFileInfo>
#include <QPainter>

#include "platform/linux/applications/entries/ApplicationFolders.h"

namespace kestrelbay {

QString genericIconName() {
    return QStringLiteral("application-x-executable");
}

QStringList spellingsOfIconName(const QString &name) {
    QString bare = name;
    for (const char *suffix : {".png", ".svg", ".xpm"})
        if (bare.endsWith(QLatin1String(suffix)))
            bare.chop(4);
    return bare == name ? QStringList{name} : QStringList{name, bare};
}

QStringList unthemedIconFiles(const QString &name) {
    QStringList files;
    if (name.contains(u'/'))
        return files;
    for (const QString &applications : applicationFolders()) {
        const QString folder = QFileInfo(applications).path() + QStringLiteral("/pixmaps/");
        for (const char *suffix : {"", ".png", ".svg", ".xpm"})
            files.append(folder + name + QLatin1String(suffix));
    }
    return files;
}

void paintPlainApplication(QPainter *painter, const QRect &rect) {
    const qreal side = std::min(rect.width(), rect.height());
    const qreal margin = side / 8;
    QRectF body(0, 0, side - 2 * margin, side - 2 * margin);
    body.moveCenter(QRectF(rect).center());
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(QColor(0x8a, 0x93, 0xa0));
    painter->drawRoundedRect(body, side / 6, side / 6);
    painter->setBrush(QColor(0xff, 0xff, 0xff, 0xd0));
    painter->drawEllipse(body.center(), side / 7, side / 7);
    painter->restore();
}

}  // namespace kestrelbay
