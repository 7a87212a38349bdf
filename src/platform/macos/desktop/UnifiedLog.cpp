#include "platform/macos/desktop/UnifiedLog.h"

#include <os/log.h>

#include <QByteArray>

namespace kestrelbay {

static_assert(OS_LOG_TYPE_DEFAULT == 0x00 && OS_LOG_TYPE_ERROR == 0x10);

void UnifiedLog::write(const QString &line) {
    // Never let go of: the system keeps one for each name anyway.
    static auto *const log = os_log_create("org.kestrelbay.KestrelBay", "general");
    const QByteArray text = line.toUtf8();
    const bool warning = line.startsWith(QLatin1String("KestrelBay [WARN]"));
    os_log_with_type(log, warning ? OS_LOG_TYPE_ERROR : OS_LOG_TYPE_DEFAULT, "%{public}s",
                     text.constData());
}

}  // namespace kestrelbay
