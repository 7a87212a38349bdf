#include "platform/macos/desktop/MacSystemAlerts.h"

#import <AppKit/NSAlert.h>
#import <AppKit/NSButton.h>
#import <AppKit/NSWindow.h>

#include <utility>

#include "platform/macos/cocoa/ObjCOwner.h"
#include "platform/macos/cocoa/Strings.h"

namespace kestrelbay {

namespace {

static_assert(NSAlertStyleWarning == 0 && NSAlertStyleInformational == 1);
static_assert(NSAlertFirstButtonReturn == 1000);

/// What the alert and whoever has shown it know of each other.
struct Conversation {
    ObjCOwner<NSAlert *> alert;
    /// Empty once it was told, or is not to be.
    std::function<void(bool)> answered;

    /// Whoever is told may let go of this and of the alert.
    void end(NSModalResponse response) {
        if (const auto tell = std::exchange(answered, nullptr))
            tell(response == NSAlertFirstButtonReturn);
    }
};

class MacShownAlert final : public SystemAlerts::Shown {
public:
    explicit MacShownAlert(std::shared_ptr<Conversation> conversation)
        : conversation_(std::move(conversation)) {}
    ~MacShownAlert() override {
        if (!std::exchange(conversation_->answered, nullptr))
            return;
        @autoreleasepool {
            NSWindow *const sheet = conversation_->alert.get().window;
            [sheet.sheetParent endSheet:sheet];
        }
    }
    MacShownAlert(const MacShownAlert &) = delete;
    MacShownAlert &operator=(const MacShownAlert &) = delete;

private:
    std::shared_ptr<Conversation> conversation_;
};

ObjCOwner<NSAlert *> makeAlert(const SystemAlerts::Alert &content) {
    ObjCOwner<NSAlert *> alert([[NSAlert alloc] init]);
    alert.get().messageText = toNSString(content.message);
    alert.get().informativeText = toNSString(content.text);
    alert.get().alertStyle = content.isWarning ? NSAlertStyleWarning : NSAlertStyleInformational;
    NSButton *const accept = [alert.get() addButtonWithTitle:toNSString(content.acceptTitle)];
    accept.hasDestructiveAction = content.isDestructive;
    if (!content.rejectTitle.isEmpty()) {
        NSButton *const reject = [alert.get() addButtonWithTitle:toNSString(content.rejectTitle)];
        // The system gives Escape to a button called "Cancel" only.
        reject.keyEquivalent = @"\033";
    }
    return alert;
}

}  // namespace

std::unique_ptr<SystemAlerts::Shown> MacSystemAlerts::show(const Alert &alert,
                                                           NativeWindow::Id window,
                                                           std::function<void(bool)> answered) {
    @autoreleasepool {
        const auto conversation =
            std::make_shared<Conversation>(Conversation{makeAlert(alert), std::move(answered)});
        auto shown = std::make_unique<MacShownAlert>(conversation);
        // NOLINTNEXTLINE(performance-no-int-to-ptr): Qt hands pointers out as numbers.
        NSWindow *const parent = reinterpret_cast<NSView *>(window).window;
        if (parent) {
            [conversation->alert.get() beginSheetModalForWindow:parent
                                              completionHandler:^(NSModalResponse response) {
                                                conversation->end(response);
                                              }];
        } else {
            conversation->end([conversation->alert.get() runModal]);
        }
        return shown;
    }
}

}  // namespace kestrelbay
