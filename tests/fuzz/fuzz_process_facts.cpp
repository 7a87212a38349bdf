#include <cstddef>
#include <cstdint>

#include <QByteArray>

#include "fuzz/Check.h"
#include "platform/linux/applications/entries/Interpreters.h"
#include "platform/linux/applications/matching/ProcessFacts.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    static_cast<void>(kestrelbay::scopeIdsOfCgroup(bytes));
    static_cast<void>(kestrelbay::snapNameOfCgroup(bytes));
    static_cast<void>(kestrelbay::flatpakIdOfInfo(bytes));
    static_cast<void>(kestrelbay::launchedEntryOfEnvironment(bytes, 1));
    static_cast<void>(kestrelbay::executableNamesOfCommandLine(bytes));
    static_cast<void>(
        kestrelbay::appImageOfEnvironment(bytes, {QStringLiteral("/usr/bin/python3")}));
    for (const char *interpreter : {"java", "python3"}) {
        const QStringList words =
            QStringList(QLatin1String(interpreter)) + kestrelbay::wordsOfCommandLine(bytes);
        const QString name = kestrelbay::interpretedProgram({words, QStringLiteral("/a")});
        check(name.isEmpty() || name.startsWith(u'/') || name.contains(u' '));
    }
    return 0;
}
