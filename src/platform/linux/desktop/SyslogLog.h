#pragma once

#include "platform/SystemLog.h"

namespace kestrelbay {

/// syslog(3) under the name "kestrelbay", and standard error when that is a
/// terminal. Control characters and line separators are written as "\u000a", so
/// that no text can pass for a second line or speak to the terminal. A terminal
/// that takes nothing (stopped with Ctrl+S) is left out rather than waited for:
/// the caller may be holding the keyboard. One object a process.
class SyslogLog final : public SystemLog {
public:
    SyslogLog();
    ~SyslogLog() override;
    SyslogLog(const SyslogLog &) = delete;
    SyslogLog &operator=(const SyslogLog &) = delete;

    void write(const QString &line) override;
};

}  // namespace kestrelbay
