#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include <QString>
#include <QUrl>

#include "platform/WindowElement.h"

namespace kestrelbay {

/// A process of this machine; below 1 there is none.
enum class ProcessIdentifier : std::int64_t {};

/// An application as it was running when the workspace was asked. Safe to use,
/// together with its windows, from any one thread at a time; independent of the
/// object that made it.
class RunningApplication {
public:
    virtual ~RunningApplication() = default;

    /// File URL of the application, a bundle or a desktop entry, as
    /// Workspace::standardized() spells it. Empty when the program belongs to none.
    [[nodiscard]] virtual QUrl bundleURL() const = 0;
    /// Bundle identifier, or desktop file id. Empty when there is none.
    [[nodiscard]] virtual QString bundleIdentifier() const = 0;
    [[nodiscard]] virtual ProcessIdentifier processIdentifier() const = 0;
    /// Was it the application in front?
    [[nodiscard]] virtual bool isActive() const = 0;

    /// Its windows, front-most first, minimised ones and those on other
    /// workspaces included. Empty when they can't be read.
    [[nodiscard]] virtual std::vector<std::unique_ptr<WindowElement>> windows() const = 0;

    // Requests: false when the request could not be delivered. True does not mean
    // that the application obeyed.
    virtual bool hide() = 0;
    /// Brings it to the front, whichever is there now, with its main window: the one last
    /// made main with WindowElement::setMain(), otherwise the front-most. May block for a
    /// fraction of a second, to see whether it has come.
    virtual bool activate() = 0;
};

}  // namespace kestrelbay
