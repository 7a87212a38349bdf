#include "platform/macos/applications/MacRunningApplication.h"

#include "platform/macos/applications/MacWindowElement.h"
#include "platform/macos/cocoa/Strings.h"

namespace kestrelbay {

// Each call has a pool of its own: the threads that make it have none.

QUrl MacRunningApplication::bundleURL() const {
    @autoreleasepool {
        NSString *const path = [[[application_.get() bundleURL] URLByStandardizingPath] path];
        // As Qt spells the names of files that it finds itself.
        return path ? QUrl::fromLocalFile(toQString(path).normalized(QString::NormalizationForm_C))
                    : QUrl();
    }
}

QString MacRunningApplication::bundleIdentifier() const {
    @autoreleasepool {
        return toQString([application_.get() bundleIdentifier]);
    }
}

ProcessIdentifier MacRunningApplication::processIdentifier() const {
    return ProcessIdentifier{[application_.get() processIdentifier]};
}

bool MacRunningApplication::isActive() const {
    return [application_.get() isActive];
}

std::vector<std::unique_ptr<WindowElement>> MacRunningApplication::windows() const {
    @autoreleasepool {
        return MacWindowElement::ofProcess(processIdentifier());
    }
}

bool MacRunningApplication::hide() {
    @autoreleasepool {
        return [application_.get() hide];
    }
}

bool MacRunningApplication::activate() {
    @autoreleasepool {
        return [application_.get() activateWithOptions:NSApplicationActivateIgnoringOtherApps];
    }
}

}  // namespace kestrelbay
