#pragma once

#include <atomic>

#include <QString>

#include "support/bus/FakeBusObject.h"

namespace kestrelbay::testing {

/// The program that brings status notifiers and the panels that show them together.
/// Needs a QCoreApplication.
class FakeNotifierWatcher {
public:
    FakeNotifierWatcher(const QString &busAddress, bool hasHost);

    /// A panel has come.
    void registerHost();

private:
    std::atomic<bool> hasHost_;
    // Last: it answers as soon as it is there.
    FakeBusObject object_;
};

}  // namespace kestrelbay::testing
