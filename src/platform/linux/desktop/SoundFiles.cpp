#include "platform/linux/desktop/SoundFiles.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace kestrelbay {

QStringList standardSoundDirectories() {
    // Not QCoreApplication's answer: the services are made before it may exist.
    const QString executable = QFileInfo(QStringLiteral("/proc/self/exe")).symLinkTarget();
    const QDir executableFolder(QFileInfo(executable).path());
    QStringList directories{QDir::cleanPath(
        executableFolder.filePath(QStringLiteral(KESTRELBAY_DATA_FROM_BIN "/kestrelbay/sounds")))};
    const QStringList shared =
        QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
    for (const QString &folder : shared) {
        directories += folder + QStringLiteral("/sounds/freedesktop/stereo");
    }
    return directories;
}

QStringList soundFileSuffixes() {
    return {QStringLiteral(".oga"), QStringLiteral(".ogg"), QStringLiteral(".wav")};
}

QString findSoundFile(const QStringList &directories, const QString &name) {
    if (name.isEmpty() || name.contains(QLatin1Char('/')) || name.contains(QChar(u'\0'))) {
        return {};
    }
    const QStringList suffixes = soundFileSuffixes();
    for (const QString &directory : directories) {
        for (const QString &suffix : suffixes) {
            QString path = directory + QLatin1Char('/') + name + suffix;
            if (QFileInfo(path).isFile()) {
                return path;
            }
        }
    }
    return {};
}

}  // namespace kestrelbay
