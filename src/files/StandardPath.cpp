#include "files/StandardPath.h"

#include <QDir>

namespace kestrelbay {

QString standardPath(const QString &path) {
    QString clean = QDir::cleanPath(path);
    // QDir keeps what would lead above the root.
    while (clean == QLatin1String("/..") || clean.startsWith(QLatin1String("/../")))
        clean.remove(0, 3);
    return clean.isEmpty() && !path.isEmpty() ? QStringLiteral("/") : clean;
}

}  // namespace kestrelbay
