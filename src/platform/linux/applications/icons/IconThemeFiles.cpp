#include "platform/linux/applications/icons/IconThemeFiles.h"

#include <algorithm>
#include <optional>
#include <utility>

#include <QDir>
#include <QFileInfo>

#include "platform/linux/applications/entries/ApplicationFolders.h"
#include "platform/linux/glib/KeyFile.h"

namespace kestrelbay {

namespace {

constexpr auto kThemeGroup = "Icon Theme";
constexpr auto kLastTheme = "hicolor";

// Distances: what has to be enlarged comes after all that only has to be reduced.
constexpr int kScalable = 1;
constexpr int kEnlarged = 100'000;
// Larger than any size in use, and small enough to be multiplied.
constexpr int kLargestNumber = 10'000;

QStringList iconFolders() {
    QStringList folders{QDir::homePath() + QStringLiteral("/.icons")};
    for (const QString &applications : applicationFolders())
        folders.append(QFileInfo(applications).path() + QStringLiteral("/icons"));
    return folders;
}

/// None when no folder has a readable index of this theme.
std::optional<KeyFile> readIndex(const QStringList &roots, const QString &theme) {
    for (const QString &root : roots)
        if (auto index = KeyFile::read(root + u'/' + theme + QStringLiteral("/index.theme")))
            return index;
    return std::nullopt;
}

QStringList names(const KeyFile &index, const char *key) {
    QStringList result;
    for (const QString &name : index.string(key, kThemeGroup).split(u',', Qt::SkipEmptyParts))
        result.append(name.trimmed());
    return result;
}

int number(const KeyFile &index, const char *group, const char *key, int otherwise) {
    return index.has(key, group) ? std::clamp(index.number(key, group), 0, kLargestNumber)
                                 : otherwise;
}

int distanceOf(const KeyFile &index, const char *group, int pixels) {
    const int scale = number(index, group, "Scale", 1);
    const int size = number(index, group, "Size", 0);
    if (size * scale == pixels)
        return 0;
    if (index.string("Type", group) == QLatin1String("Scalable") &&
        number(index, group, "MinSize", size) * scale <= pixels &&
        pixels <= number(index, group, "MaxSize", size) * scale)
        return kScalable;
    const int excess = size * scale - pixels;
    return excess > 0 ? kScalable + excess : kEnlarged - excess;
}

}  // namespace

IconThemeFiles::IconThemeFiles(const QStringList &themes, int pixels)
    : roots_(iconFolders()), pixels_(pixels) {
    known_.append(QLatin1String(kLastTheme));
    for (const QString &theme : themes)
        addTheme(theme);
    known_.clear();
    addTheme(QLatin1String(kLastTheme));
}

void IconThemeFiles::addTheme(const QString &name) {
    if (name.isEmpty() || name.contains(u'/') || known_.contains(name))
        return;
    known_.append(name);
    const std::optional<KeyFile> index = readIndex(roots_, name);
    if (!index)
        return;
    const auto first = static_cast<std::ptrdiff_t>(folders_.size());
    for (const char *key : {"Directories", "ScaledDirectories"})
        for (const QString &folder : names(*index, key)) {
            const int distance = distanceOf(*index, folder.toUtf8().constData(), pixels_);
            for (const QString &root : roots_)
                folders_.push_back({.path = root + u'/' + name + u'/' + folder + u'/',
                                    .distance = distance,
                                    .files = {}});
        }
    std::ranges::stable_sort(folders_.begin() + first, folders_.end(), {}, &Folder::distance);
    for (const QString &parent : names(*index, "Inherits"))
        addTheme(parent);
}

QString IconThemeFiles::find(const QString &name) {
    for (Folder &folder : folders_) {
        if (!folder.files) {
            const QStringList files = QDir(folder.path).entryList(QDir::Files, QDir::Unsorted);
            folder.files.emplace(files.cbegin(), files.cend());
        }
        for (const char *suffix : {".png", ".svg", ".xpm"})
            if (const QString file = name + QLatin1String(suffix); folder.files->contains(file))
                return folder.path + file;
    }
    return {};
}

}  // namespace kestrelbay
