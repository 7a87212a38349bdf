#pragma once

#include <QString>

namespace kestrelbay {

/// The system's log. Any thread.
class SystemLog {
public:
    virtual ~SystemLog() = default;

    /// Writes one line. The line carries its own prefix, "KestrelBay: " or
    /// "KestrelBay [WARN] ".
    virtual void write(const QString &line) = 0;
};

}  // namespace kestrelbay
