#include "platform/macos/applications/MacWorkspace.h"

#include <utility>

#include <QFileInfo>

#import <AppKit/NSWorkspace.h>

#include "platform/macos/applications/MacRunningApplication.h"
#include "platform/macos/cocoa/Strings.h"

namespace kestrelbay {

// Each call has a pool of its own: the threads that make it have none.

std::vector<std::unique_ptr<RunningApplication>> MacWorkspace::runningApplications() {
    @autoreleasepool {
        std::vector<std::unique_ptr<RunningApplication>> applications;
        for (NSRunningApplication *application in
             [[NSWorkspace sharedWorkspace] runningApplications])
            applications.push_back(std::make_unique<MacRunningApplication>(application));
        return applications;
    }
}

bool MacWorkspace::open(const QUrl &url) {
    @autoreleasepool {
        NSURL *const target = toNSURL(url);
        return target && [[NSWorkspace sharedWorkspace] openURL:target];
    }
}

void MacWorkspace::openApplication(const QUrl &application, const QStringList &arguments,
                                   Completion completion) {
    @autoreleasepool {
        NSMutableArray *const texts = [NSMutableArray array];
        for (const QString &argument : arguments)
            [texts addObject:toNSString(argument)];
        NSWorkspaceOpenConfiguration *const configuration =
            [NSWorkspaceOpenConfiguration configuration];
        [configuration setArguments:texts];
        [configuration setCreatesNewApplicationInstance:YES];
        [[NSWorkspace sharedWorkspace]
            openApplicationAtURL:toNSURL(application)
                   configuration:configuration
               completionHandler:^(NSRunningApplication * /*application*/, NSError *error) {
                 completion(toQString([error localizedDescription]));
               }];
    }
}

bool MacWorkspace::openFiles(const QList<QUrl> &files, const QUrl &application) {
    if (!QFileInfo::exists(application.toLocalFile()))
        return false;
    @autoreleasepool {
        NSMutableArray *const urls = [NSMutableArray array];
        for (const QUrl &file : files)
            [urls addObject:toNSURL(file)];
        [[NSWorkspace sharedWorkspace]
                        openURLs:urls
            withApplicationAtURL:toNSURL(application)
                   configuration:[NSWorkspaceOpenConfiguration configuration]
               completionHandler:^(NSRunningApplication * /*application*/, NSError * /*error*/){
               }];
        return true;
    }
}

bool MacWorkspace::showFolder(const QString &path) {
    @autoreleasepool {
        return [[NSWorkspace sharedWorkspace] selectFile:nil
                                inFileViewerRootedAtPath:toNSString(path)];
    }
}

QString MacWorkspace::fileManagerIdentifier() const {
    return QStringLiteral("com.apple.finder");
}

}  // namespace kestrelbay
