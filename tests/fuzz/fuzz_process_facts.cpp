#include <cstddef>
#include <cstdint>

#include <QByteArray>

#include "platform/linux/applications/matching/ProcessFacts.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    static_cast<void>(kestrelbay::scopeIdsOfCgroup(bytes));
    static_cast<void>(kestrelbay::snapNameOfCgroup(bytes));
    static_cast<void>(kestrelbay::flatpakIdOfInfo(bytes));
    static_cast<void>(kestrelbay::launchedEntryOfEnvironment(bytes, 1));
    static_cast<void>(kestrelbay::executableNamesOfCommandLine(bytes));
    return 0;
}
