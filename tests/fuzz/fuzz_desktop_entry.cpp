#include <cstddef>
#include <cstdint>

#include <QByteArray>

#include "fuzz/Check.h"
#include "platform/linux/applications/entries/CommandLine.h"
#include "platform/linux/applications/entries/DesktopEntry.h"
#include "platform/linux/applications/launching/ExecLine.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QString path = QStringLiteral("/a/b.desktop");
    if (const auto entry = kestrelbay::parseDesktopEntry(bytes, path, QStringLiteral("b.desktop")))
        check(entry->path == path);

    // The same bytes as the body of an entry and as an Exec line, which a fuzzer
    // would take long to come upon.
    static_cast<void>(
        kestrelbay::parseDesktopEntry("[Desktop Entry]\nType=Application\nName=B\nExec=" + bytes,
                                      path, QStringLiteral("b.desktop")));
    const QString exec = QString::fromUtf8(bytes);
    static_cast<void>(kestrelbay::programOfExec(exec));
    const auto innermost = [](const QStringList &words) {
        return kestrelbay::innermostCommand({words, QStringLiteral("/a")}).words;
    };
    if (const auto words = kestrelbay::wordsOfExec(exec))
        static_cast<void>(innermost(*words));
    static_cast<void>(innermost({QStringLiteral("sh"), QStringLiteral("-c"), exec}));
    const kestrelbay::ExecContext context{QStringLiteral("B"), QStringLiteral("b"), path};
    for (const auto codes : {kestrelbay::FileCodes::Keep, kestrelbay::FileCodes::Drop}) {
        if (const auto rewritten = kestrelbay::rewrittenExec(exec, context, codes, {exec}))
            check(!rewritten->isEmpty());
    }
    return 0;
}
