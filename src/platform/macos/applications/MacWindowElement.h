#pragma once

#include <memory>
#include <vector>

#include <ApplicationServices/ApplicationServices.h>

#include "platform/RunningApplication.h"
#include "platform/WindowElement.h"
#include "platform/macos/cocoa/CFOwner.h"

namespace kestrelbay {

/// A window by Accessibility. Everything fails without the permission.
class MacWindowElement final : public WindowElement {
public:
    /// The windows of a process, front-most first; none below process 1 and where the
    /// process does not answer with a list of elements.
    [[nodiscard]] static std::vector<std::unique_ptr<WindowElement>> ofProcess(
        ProcessIdentifier process);

    explicit MacWindowElement(CFOwner<AXUIElementRef> element) : element_(std::move(element)) {}

    [[nodiscard]] std::optional<QString> subrole() const override;
    [[nodiscard]] std::optional<bool> isMinimized() const override;
    bool setMinimized(bool minimized) override;
    bool setMain() override;
    bool setFocused() override;
    bool raise() override;

private:
    CFOwner<AXUIElementRef> element_;
};

}  // namespace kestrelbay
