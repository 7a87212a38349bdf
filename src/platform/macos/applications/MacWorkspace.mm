#include "platform/macos/applications/MacWorkspace.h"

#include <chrono>
#include <thread>

#include <QFileInfo>

#import <AppKit/NSRunningApplication.h>
#import <AppKit/NSWorkspace.h>

#include "platform/macos/applications/MacWindowElement.h"
#include "platform/macos/cocoa/ObjCOwner.h"
#include "platform/macos/cocoa/Strings.h"
#include "platform/macos/cocoa/SystemVersion.h"

namespace kestrelbay {

// Each call has a pool of its own: the threads that make it have none.

namespace {

constexpr NSApplicationActivationOptions kActivation = NSApplicationActivateIgnoringOtherApps;
static_assert(kActivation == 2);

/// A program that was allowed to come forward has done so by then.
constexpr std::chrono::milliseconds kTimeToComeForward{150};
constexpr std::chrono::milliseconds kBetweenLooks{10};

/// Empty for nil.
QUrl standardizedUrl(NSURL *file) {
    NSString *const path = [[file URLByStandardizingPath] path];
    // As Qt spells the names of files that it finds itself.
    return path ? QUrl::fromLocalFile(toQString(path).normalized(QString::NormalizationForm_C))
                : QUrl();
}

class MacRunningApplication final : public RunningApplication {
public:
    explicit MacRunningApplication(NSRunningApplication *application)
        : application_(ObjCOwner<NSRunningApplication *>::retained(application)) {}

    [[nodiscard]] QUrl bundleURL() const override {
        @autoreleasepool {
            return standardizedUrl([application_.get() bundleURL]);
        }
    }
    [[nodiscard]] QString bundleIdentifier() const override {
        @autoreleasepool {
            return toQString([application_.get() bundleIdentifier]);
        }
    }
    [[nodiscard]] ProcessIdentifier processIdentifier() const override {
        return ProcessIdentifier{[application_.get() processIdentifier]};
    }
    [[nodiscard]] bool isActive() const override { return [application_.get() isActive]; }
    [[nodiscard]] std::vector<std::unique_ptr<WindowElement>> windows() const override {
        @autoreleasepool {
            return MacWindowElement::ofProcess(processIdentifier());
        }
    }

    bool hide() override {
        @autoreleasepool {
            return [application_.get() hide];
        }
    }
    bool activate() override {
        @autoreleasepool {
            const bool isDelivered = [application_.get() activateWithOptions:kActivation];
            // From macOS 14 on the option does nothing by itself, and the system may refuse a
            // program in the background. What is opened it lets come forward.
            if (!isMacOSAtLeast(14) || comesForward())
                return isDelivered;
            return openInFront() || isDelivered;
        }
    }

private:
    /// Blocks until it is in front or has ended, at most for kTimeToComeForward.
    [[nodiscard]] bool comesForward() const {
        const auto end = std::chrono::steady_clock::now() + kTimeToComeForward;
        while (!isActive()) {
            if ([application_.get() isTerminated] || std::chrono::steady_clock::now() >= end)
                return false;
            std::this_thread::sleep_for(kBetweenLooks);
        }
        return true;
    }

    /// False when there is nothing to open: it has ended, or belongs to no bundle.
    [[nodiscard]] bool openInFront() {
        NSURL *const bundle = [application_.get() bundleURL];
        if (!bundle || [application_.get() isTerminated])
            return false;
        NSWorkspaceOpenConfiguration *const configuration =
            [NSWorkspaceOpenConfiguration configuration];
        [configuration setActivates:YES];
        [[NSWorkspace sharedWorkspace] openApplicationAtURL:bundle
                                              configuration:configuration
                                          completionHandler:nil];
        return true;
    }

    ObjCOwner<NSRunningApplication *> application_;
};

}  // namespace

std::vector<std::unique_ptr<RunningApplication>> MacWorkspace::runningApplications() {
    @autoreleasepool {
        std::vector<std::unique_ptr<RunningApplication>> applications;
        for (NSRunningApplication *application in
             [[NSWorkspace sharedWorkspace] runningApplications])
            applications.push_back(std::make_unique<MacRunningApplication>(application));
        return applications;
    }
}

QUrl MacWorkspace::standardized(const QUrl &file) const {
    @autoreleasepool {
        return standardizedUrl(toNSURL(file));
    }
}

QUrl MacWorkspace::resolved(const QUrl &file) const {
    const QUrl place = standardized(file);
    const QString target = QFileInfo(place.toLocalFile()).canonicalFilePath();
    return target.isEmpty() ? place : standardized(QUrl::fromLocalFile(target));
}

bool MacWorkspace::open(const QUrl &file) {
    @autoreleasepool {
        NSURL *const target = toNSURL(file);
        return target && [[NSWorkspace sharedWorkspace] openURL:target];
    }
}

bool MacWorkspace::openUrl(const QString &url) {
    @autoreleasepool {
        // It keeps the text, whatever it makes of its parts.
        NSURL *const target = [NSURL URLWithString:toNSString(url)];
        return target && [[NSWorkspace sharedWorkspace] openURL:target];
    }
}

void MacWorkspace::openApplication(const QUrl &application, const QStringList &arguments,
                                   Completion completion) {
    @autoreleasepool {
        NSURL *const target = toNSURL(application);
        if (!target) {
            completion(QStringLiteral("not a file: ") + application.toString());
            return;
        }
        NSMutableArray *const texts = [NSMutableArray array];
        for (const QString &argument : arguments)
            [texts addObject:toNSString(argument)];
        NSWorkspaceOpenConfiguration *const configuration =
            [NSWorkspaceOpenConfiguration configuration];
        [configuration setArguments:texts];
        [configuration setCreatesNewApplicationInstance:YES];
        [[NSWorkspace sharedWorkspace]
            openApplicationAtURL:target
                   configuration:configuration
               completionHandler:^(NSRunningApplication * /*application*/, NSError *error) {
                 completion(toQString([error localizedDescription]));
               }];
    }
}

bool MacWorkspace::openFiles(const QList<QUrl> &files, const QUrl &application) {
    @autoreleasepool {
        NSURL *const target = toNSURL(application);
        if (!target || !QFileInfo::exists(application.toLocalFile()))
            return false;
        NSMutableArray *const urls = [NSMutableArray array];
        for (const QUrl &file : files) {
            NSURL *const url = toNSURL(file);
            if (!url)
                return false;
            [urls addObject:url];
        }
        [[NSWorkspace sharedWorkspace]
                        openURLs:urls
            withApplicationAtURL:target
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
