#include "session/KWinBenchSession.h"

#include <QKeyCombination>

namespace kestrelbay::bench {

namespace {

/// The quickest that a program can do which is started for one press: it has a script of the user's
/// do it, which runs in KWin.
constexpr const char *kOwnCommand =
    "dbus-send --session --type=method_call --dest=org.kde.kglobalaccel /component/kwin "
    "org.kde.kglobalaccel.Component.invokeShortcut string:kestrel-own";

constexpr const char *kOwnScript = R"(
registerShortcut('kestrel-own', 'Brings one window forward', '', () => {
    for (const w of workspace.windowList ? workspace.windowList() : workspace.clientList()) {
        if (String(w.internalId) == '%1')
            workspace['activeWindow' in workspace ? 'activeWindow' : 'activeClient'] = w;
    }
});
)";

constexpr const char *kFocusScript = R"(
(workspace.windowList ? workspace.windowActivated : workspace.clientActivated).connect(w => {
    if (w)
        callDBus('%1', '/', '%2', 'Focused', String(w.internalId));
});
)";

desktop::KWinSetup setup(const QString &program, KWinBenchSession::Windows windows) {
    desktop::KWinSetup setup{.taskBars = {QStringLiteral(KWIN_LIMIT_PROGRAM)},
                             .shortcuts = {{.name = QStringLiteral("kestrel-own"),
                                            .letter = QChar(BenchSession::kOwnKey.label),
                                            .command = kOwnCommand}}};
    if (windows == KWinBenchSession::Windows::Protocol)
        setup.taskBars.append(program);
    return setup;
}

}  // namespace

KWinBenchSession::KWinBenchSession(const QString &program, Windows windows)
    : stage_({.program = program, .windowManager = QStringLiteral("kwin")},
             setup(program, windows)),
      focus_(stage_.desktop().environment().value(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"))) {
    stage_.desktop().scripts().start(
        QStringLiteral("kestrel-focus"),
        QString::fromLatin1(kFocusScript)
            .arg(focus_.name(), QLatin1StringView(FocusOnBus::kInterface)));
}

void KWinBenchSession::startOthers(Window target) {
    target_ = stage_.view().nameOf(target);
    stage_.desktop().scripts().start(QStringLiteral("kestrel-own"),
                                     QString::fromLatin1(kOwnScript).arg(target_));
    const QKeyCombination key(Qt::META, static_cast<Qt::Key>(kLimitsKey.label));
    stage_.desktop().start(stage_.desktop().withinReach(QStringLiteral(KWIN_LIMIT_PROGRAM)),
                           {target_, QString::number(key.toCombined())});
}

}  // namespace kestrelbay::bench
