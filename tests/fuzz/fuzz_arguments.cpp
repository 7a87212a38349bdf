#include <cstddef>
#include <cstdint>

#include <QString>

#include "fuzz/Check.h"
#include "launcher/AppLauncher.h"
#include "model/ShortcutRule.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const QString text =
        QString::fromUtf8(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    qsizetype total = 0;
    for (const QString &argument : kestrelbay::AppLauncher::parseCommandLineArgs(text)) {
        check(!argument.isEmpty());
        total += argument.size();
    }
    check(total <= text.size());
    static_cast<void>(kestrelbay::ShortcutRule::inferKind(text));
    return 0;
}
