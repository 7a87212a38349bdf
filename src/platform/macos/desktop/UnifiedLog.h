#pragma once

#include "platform/SystemLog.h"

namespace kestrelbay {

/// The unified log, under the bundle's identifier as subsystem. Warnings are written
/// as errors, so that the log keeps them longest; nothing in a line is hidden.
class UnifiedLog final : public SystemLog {
public:
    void write(const QString &line) override;
};

}  // namespace kestrelbay
