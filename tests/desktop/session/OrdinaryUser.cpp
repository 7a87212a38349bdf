#include "desktop/session/OrdinaryUser.h"

#include <unistd.h>

#include <stdexcept>

#include <QDirIterator>
#include <QFile>
#include <QProcessEnvironment>

#include "support/ChildProcess.h"

namespace kestrelbay::desktop {

namespace {

/// Debian's numbers of "nobody" and "nogroup".
constexpr unsigned kNobody = 65534;

bool weAreRoot() {
    return ::geteuid() == 0;
}

void give(const QString &path) {
    // What is gone by now needs no owner.
    (void)!::lchown(QFile::encodeName(path).constData(), kNobody, kNobody);
}

}  // namespace

Command asOrdinaryUser(const QString &program, const QStringList &arguments) {
    if (!weAreRoot())
        return {.program = program, .arguments = arguments};
    // From the home folder on, as they may not be let into ours.
    return {.program = QStringLiteral("setpriv"),
            .arguments =
                QStringList{QStringLiteral("--reuid=%1").arg(kNobody),
                            QStringLiteral("--regid=%1").arg(kNobody),
                            QStringLiteral("--clear-groups"), QStringLiteral("sh"),
                            QStringLiteral("-c"), QStringLiteral(R"(cd 2>/dev/null; exec "$@")"),
                            QStringLiteral("sh"), program} +
                arguments};
}

void giveToOrdinaryUser(const QString &folder) {
    if (!weAreRoot())
        return;
    give(folder);
    QDirIterator all(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                     QDirIterator::Subdirectories);
    while (all.hasNext())
        give(all.next());
}

bool ordinaryUserCanRun(const QString &program) {
    const Command command = asOrdinaryUser(QStringLiteral("test"), {QStringLiteral("-x"), program});
    testing::ChildProcess test(command.program, command.arguments,
                               QProcessEnvironment::systemEnvironment());
    return test.waitForExit() && test.exitCode() == 0;
}

ActingAsOrdinaryUser::ActingAsOrdinaryUser() : before_(::geteuid()) {
    if (before_ == 0 && ::seteuid(kNobody) != 0)
        throw std::runtime_error("cannot act as an ordinary user");
}

ActingAsOrdinaryUser::~ActingAsOrdinaryUser() {
    static_cast<void>(::seteuid(before_));
}

}  // namespace kestrelbay::desktop
