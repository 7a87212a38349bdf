#include "launcher/FilePath.h"

#include <cerrno>
#include <cstddef>
#include <optional>
#include <vector>

#include <pwd.h>

#include <QDir>
#include <QFile>

namespace kestrelbay {

namespace {

std::optional<QString> homeOf(const QString &userName) {
    constexpr std::size_t kFirstSize = 1024;
    constexpr std::size_t kLargestSize = std::size_t{1} << 20U;
    const QByteArray name = userName.toLocal8Bit();
    for (std::size_t size = kFirstSize; size <= kLargestSize; size *= 2) {
        std::vector<char> buffer(size);
        passwd entry{};
        passwd *found = nullptr;
        const int error =
            getpwnam_r(name.constData(), &entry, buffer.data(), buffer.size(), &found);
        if (error == ERANGE)
            continue;
        if (error != 0 || !found || !found->pw_dir)
            return std::nullopt;
        return QFile::decodeName(found->pw_dir);
    }
    return std::nullopt;
}

}  // namespace

QString expandingTilde(const QString &path) {
    if (!path.startsWith(u'~'))
        return path;
    const qsizetype slash = path.indexOf(u'/');
    const qsizetype nameEnd = slash < 0 ? path.size() : slash;
    const QString name = path.sliced(1, nameEnd - 1);
    const std::optional<QString> home = name.isEmpty() ? QDir::homePath() : homeOf(name);
    return home ? *home + path.sliced(nameEnd) : path;
}

QUrl fileUrl(const QString &path) {
    // Not as QDir sees it, to whom a path that begins with a colon is one of Qt's resources.
    QString absolute = path.startsWith(u'/') ? path : QDir::currentPath() + u'/' + path;
    // QUrl would take what follows two slashes for a host.
    while (absolute.startsWith(QStringLiteral("//")))
        absolute.remove(0, 1);
    return QUrl::fromLocalFile(absolute);
}

}  // namespace kestrelbay
