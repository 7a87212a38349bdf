#include "platform/linux/JsonUserDefaults.h"

#include <sys/stat.h>

#include <cerrno>
#include <utility>

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QSaveFile>

#include "platform/linux/JsonMemberEdit.h"

namespace kestrelbay {

namespace {

/// What the kernel allows in one path (MAXSYMLINKS).
constexpr int kMaxLinks = 40;

/// The content; empty for a file that does not exist, absent for one that can't
/// be read. Only regular files: opening a pipe would wait for its writer.
std::optional<QByteArray> readFile(const QString &path) {
    struct stat status {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0) {
        return errno == ENOENT ? std::optional(QByteArray()) : std::nullopt;
    }
    QFile file(path);
    if (!S_ISREG(status.st_mode) || !file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    QByteArray content = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        return std::nullopt;
    }
    return content;
}

QJsonObject readObject(const QString &path) {
    return QJsonDocument::fromJson(readFile(path).value_or(QByteArray())).object();
}

/// The file at the end of a chain of symbolic links, whether it exists or not.
/// Absent when the links run in a circle.
std::optional<QString> linkTarget(const QString &path) {
    QFileInfo info(path);
    for (int links = 0; info.isSymLink(); ++links) {
        if (links == kMaxLinks) {
            return std::nullopt;
        }
        info.setFile(info.symLinkTarget());
    }
    return info.absoluteFilePath();
}

/// Copies the file to a free name beside it, and says to which; empty on failure.
QString keepCopy(const QString &path) {
    const QString first = path + QStringLiteral(".unreadable");
    QString copy = first;
    for (int number = 2; QFileInfo::exists(copy) || QFileInfo(copy).isSymLink(); ++number) {
        copy = first + QLatin1Char('.') + QString::number(number);
    }
    return QFile::copy(path, copy) ? copy : QString();
}

bool replaceFile(const QString &path, const QByteArray &content) {
    if (!QDir().mkpath(QFileInfo(path).path())) {
        return false;
    }
    QSaveFile file(path);
    // The flush must be asked about: on a full disk commit() would report success
    // for the part of the file that fitted.
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size() &&
           file.flush() && file.commit();
}

void store(const QString &path, const QString &key, const QJsonValue &value) {
    const auto content = readFile(path);
    const auto target = linkTarget(path);
    if (!content || !target) {
        return;
    }
    // An editor or a crash may leave an empty file, in which nothing is lost.
    if (content->trimmed().isEmpty()) {
        replaceFile(*target, withMember("{\n}\n", key, value));
        return;
    }
    if (QJsonDocument::fromJson(*content).isObject()) {
        replaceFile(*target, withMember(*content, key, value));
        return;
    }
    const QString copy = keepCopy(path);
    if (!copy.isEmpty() && !replaceFile(*target, withMember("{\n}\n", key, value))) {
        QFile::remove(copy);
    }
}

}  // namespace

JsonUserDefaults::JsonUserDefaults(QString path) : path_(std::move(path)) {}

std::optional<QString> JsonUserDefaults::string(const QString &key) const {
    const QJsonValue value = readObject(path_).value(key);
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

std::optional<bool> JsonUserDefaults::boolean(const QString &key) const {
    const QJsonValue value = readObject(path_).value(key);
    return value.isBool() ? std::optional(value.toBool()) : std::nullopt;
}

bool JsonUserDefaults::contains(const QString &key) const {
    return readObject(path_).contains(key);
}

void JsonUserDefaults::setString(const QString &key, const QString &value) {
    store(path_, key, value);
}

void JsonUserDefaults::setBoolean(const QString &key, bool value) {
    store(path_, key, value);
}

}  // namespace kestrelbay
