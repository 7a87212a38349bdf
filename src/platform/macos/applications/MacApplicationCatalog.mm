#include "platform/macos/applications/MacApplicationCatalog.h"

#include <QDir>
#include <QFileInfo>

#import <AppKit/NSWorkspace.h>
#import <Foundation/Foundation.h>

#include "platform/macos/cocoa/NSImages.h"
#include "platform/macos/cocoa/Strings.h"

namespace kestrelbay {

namespace {

QImage listIcon(const QString &path, const ListIcons &icons) {
    @autoreleasepool {
        return toQImage([[NSWorkspace sharedWorkspace] iconForFile:toNSString(path)],
                        QSize(icons.pixels, icons.pixels));
    }
}

QString displayName(const QString &path) {
    @autoreleasepool {
        return toQString([[NSFileManager defaultManager] displayNameAtPath:toNSString(path)]);
    }
}

/// Null for a file that is no bundle.
CFOwner<CFDictionaryRef> readInformation(const QString &path) {
    const CFOwner<CFURLRef> url(CFURLCreateWithFileSystemPath(
        kCFAllocatorDefault, toCFString(path).get(), kCFURLPOSIXPathStyle, true));
    return url ? CFOwner<CFDictionaryRef>(CFBundleCopyInfoDictionaryInDirectory(url.get()))
               : CFOwner<CFDictionaryRef>();
}

/// Both spellings are in use.
bool isTrue(CFTypeRef value) {
    if (const auto *const flag = cfCast<CFBooleanRef>(value, CFBooleanGetTypeID()))
        return CFBooleanGetValue(flag);
    return toQString(cfCast<CFStringRef>(value, CFStringGetTypeID())) == u'1';
}

/// Has the bundle at this path a place among the applications that a user chooses
/// from? Not when it works in the background, declares no icon, or is no bundle.
/// Reads its information dictionary afresh.
bool isBundleForUsers(const QString &path) {
    const CFOwner<CFDictionaryRef> information = readInformation(path);
    if (!information)
        return false;
    const auto value = [&information](CFStringRef key) {
        return CFDictionaryGetValue(information.get(), key);
    };
    if (isTrue(value(CFSTR("LSUIElement"))) || isTrue(value(CFSTR("LSBackgroundOnly"))))
        return false;
    return value(CFSTR("CFBundleIconFile")) || value(CFSTR("CFBundleIconName")) ||
           cfCast<CFDictionaryRef>(value(CFSTR("CFBundleIcons")), CFDictionaryGetTypeID());
}

}  // namespace

MacApplicationCatalog::MacApplicationCatalog()
    : MacApplicationCatalog({QStringLiteral("/Applications"),
                             QStringLiteral("/System/Applications"),
                             QStringLiteral("/System/Applications/Utilities"),
                             QStringLiteral("/System/Library/CoreServices"),
                             QDir::homePath() + QStringLiteral("/Applications")}) {}

std::vector<QImage> MacApplicationCatalog::listIcons(const QStringList &applicationPaths,
                                                     const ListIcons &icons) const {
    std::vector<QImage> images;
    images.reserve(static_cast<std::size_t>(applicationPaths.size()));
    for (const QString &path : applicationPaths)
        images.push_back(listIcon(path, icons));
    return images;
}

QString MacApplicationCatalog::nameOfFile(const QString &applicationPath) const {
    const QFileInfo info(applicationPath);
    if (!info.exists())
        return {};
    const QString name = info.completeBaseName();
    return name.isEmpty() ? info.fileName() : name;
}

QString MacApplicationCatalog::applicationFilePattern() const {
    return QStringLiteral("*.app");
}

std::vector<InstalledApplication> MacApplicationCatalog::installedApplications() const {
    std::vector<InstalledApplication> applications;
    for (const QString &directory : directories_) {
        const QDir folder(directory);
        const QStringList names =
            folder.entryList({applicationFilePattern()},
                             QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System |
                                 QDir::CaseSensitive,
                             QDir::Name);
        for (const QString &name : names) {
            const QString path = folder.filePath(name);
            if (!isBundleForUsers(path))
                continue;
            applications.push_back({.name = displayName(path),
                                    .fileName = QFileInfo(name).completeBaseName(),
                                    .path = path});
        }
    }
    return applications;
}

}  // namespace kestrelbay
