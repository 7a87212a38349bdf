#pragma once

#include <memory>
#include <vector>

#import <AppKit/NSRunningApplication.h>

#include "platform/RunningApplication.h"
#include "platform/macos/cocoa/ObjCOwner.h"

namespace kestrelbay {

class MacRunningApplication final : public RunningApplication {
public:
    explicit MacRunningApplication(NSRunningApplication *application)
        : application_(ObjCOwner<NSRunningApplication *>::retained(application)) {}

    /// Standardised: "." and ".." are resolved.
    [[nodiscard]] QUrl bundleURL() const override;
    [[nodiscard]] QString bundleIdentifier() const override;
    [[nodiscard]] ProcessIdentifier processIdentifier() const override;
    [[nodiscard]] bool isActive() const override;
    [[nodiscard]] std::vector<std::unique_ptr<WindowElement>> windows() const override;
    bool hide() override;
    bool activate() override;

private:
    ObjCOwner<NSRunningApplication *> application_;
};

}  // namespace kestrelbay
