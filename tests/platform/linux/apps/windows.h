#pragma once

#include <vector>

#include <gtest/gtest.h>

#include "platform/linux/apps/desktop.h"
#include "support/Poll.h"

namespace kestrelbay::testing {

using namespace std::chrono_literals;

class LinuxWorkspaceWindows : public AppsDesktop {
protected:
    /// An entry for windows that the test makes itself.
    QString entry(const char *name) {
        const QString file = QLatin1String(name) + QStringLiteral(".desktop");
        return PrivateHome::instance().writeEntry(
            file, QByteArray("Exec=/bin/true\nStartupWMClass=") + name);
    }

    /// Windows of that class, the last one in front.
    std::vector<xcb_window_t> make(const char *className, int count) {
        std::vector<xcb_window_t> windows;
        for (int i = 0; i < count; ++i) {
            windows.push_back(maker_->make({.className = className}));
            // One after the other, or their order is the window manager's choice.
            EXPECT_TRUE(waitUntil([&] { return maker_->managed({windows.back()}); }));
            maker_->activate(windows.back());
            EXPECT_TRUE(waitUntil([&] { return maker_->active() == windows.back(); }));
        }
        return windows;
    }
};

}  // namespace kestrelbay::testing
