#include "platform/linux/desktop/AutostartLoginItem.h"

#include <utility>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include "files/DataFile.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

QString entryIn(const QString &folder) {
    return folder + u"/org.kestrelbay.KestrelBay.desktop"_s;
}

/// An entry rules over those of less important folders even if it is broken, or a
/// link to nowhere.
bool isTaken(const QString &path) {
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

bool startsProgram(const QString &path, const AutostartEntry::Context &context) {
    const auto entry = AutostartEntry::parse(DataFile(path).read().bytes);
    return entry && entry->startsProgram(context);
}

/// A link to a device, or into a folder of the system's, is a way to say no or yes
/// for good. What it leads to is not the user's to change.
bool isLinkOutOfReach(const QString &path) {
    const QFileInfo info(path);
    return info.isSymLink() && info.exists() && !(info.isFile() && info.isWritable());
}

QString thisExecutable() {
    QString executable = QCoreApplication::applicationFilePath();
    // So the system calls a running program whose file an update has replaced.
    constexpr QLatin1StringView kReplaced{" (deleted)"};
    if (executable.endsWith(kReplaced) && !QFileInfo::exists(executable))
        executable.chop(kReplaced.size());

    const QString image = qEnvironmentVariable("APPIMAGE");
    const QString unpacked = qEnvironmentVariable("APPDIR");
    // Programs that were started by another image inherit its variables.
    const bool isInImage = !unpacked.isEmpty() && executable.startsWith(unpacked + u'/');
    return isInImage && QFileInfo(image).isAbsolute() ? image : executable;
}

}  // namespace

AutostartLoginItem::Places AutostartLoginItem::placesOfThisProgram() {
    Places places;
    for (const QString &folder :
         QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation))
        places.systemFolders.append(folder + u"/autostart"_s);
    places.userFolder = places.systemFolders.takeFirst();
    places.context.executable = thisExecutable();
    places.context.desktops =
        qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts);
    return places;
}

AutostartLoginItem::AutostartLoginItem(Places places)
    : places_(std::move(places)), userEntry_(entryIn(places_.userFolder)) {}

bool AutostartLoginItem::isEnabled() const {
    return isTaken(userEntry_) ? startsProgram(userEntry_, places_.context) : systemStartsProgram();
}

std::optional<QString> AutostartLoginItem::setEnabled(bool enabled) {
    if (enabled == isEnabled())
        return std::nullopt;
    std::optional<QString> problem;
    if (enabled) {
        if (!QFileInfo(places_.context.executable).isExecutable())
            return u"%1 is not there any more"_s.arg(places_.context.executable);
        problem = changeUserEntry(
            [this](AutostartEntry &entry) { entry.makeStartProgram(places_.context); });
    } else if (systemStartsProgram()) {
        problem = changeUserEntry([](AutostartEntry &entry) { entry.hide(); });
    } else {
        problem = removeUserEntry();
    }
    return problem;
}

bool AutostartLoginItem::systemStartsProgram() const {
    for (const QString &folder : places_.systemFolders) {
        if (const QString path = entryIn(folder); isTaken(path))
            return startsProgram(path, places_.context);
    }
    return false;
}

std::optional<QString> AutostartLoginItem::removeUserEntry() const {
    QFile file(userEntry_);
    if (file.remove())
        return std::nullopt;
    return u"%1 cannot be deleted: %2"_s.arg(userEntry_, file.errorString());
}

template <typename Change>
std::optional<QString> AutostartLoginItem::changeUserEntry(Change change) const {
    const DataFile file(userEntry_);
    const DataFile::Content content = file.read();
    std::optional<AutostartEntry> entry = AutostartEntry::parse(content.bytes);
    DataFile::OldFile old = DataFile::OldFile::Replace;
    if (!entry) {
        entry.emplace();
        if (content.status == DataFile::Status::Unusable || !content.bytes.trimmed().isEmpty())
            old = DataFile::OldFile::Keep;
    }
    change(*entry);
    if (isLinkOutOfReach(userEntry_)) {
        QFile::remove(userEntry_);
        old = DataFile::OldFile::Replace;
    }
    if (file.replace(entry->text(), old))
        return std::nullopt;
    return u"%1 cannot be written"_s.arg(userEntry_);
}

}  // namespace kestrelbay
