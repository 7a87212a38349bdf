#include "preferences/advanced/Restart.h"

#include <utility>

#include <QCoreApplication>
#include <QProcess>

#include "settings/L.h"
#include "ui/windows/Sheet.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

Command openCommand(const QString &executablePath) {
    const qsizetype inBundle = executablePath.lastIndexOf(".app/Contents/MacOS/"_L1);
    const QString bundle =
        inBundle < 0 ? executablePath : executablePath.first(inBundle + ".app"_L1.size());
    return {u"/usr/bin/open"_s, {bundle}};
}

Command afterProcess(qint64 processIdentifier, const Command &command) {
    const QString wait = u"while kill -0 \"$0\" 2>/dev/null; do sleep 0.1; done; exec \"$@\""_s;
    return {u"/bin/sh"_s,
            QStringList{u"-c"_s, wait, QString::number(processIdentifier), command.program} +
                command.arguments};
}

void restartProgram() {
    // An instance that still runs would only be brought forward.
    const Command command = afterProcess(QCoreApplication::applicationPid(),
                                         openCommand(QCoreApplication::applicationFilePath()));
    QProcess::startDetached(command.program, command.arguments);
    QCoreApplication::quit();
}

AlertSheet *openRestartSheet(QWidget *parent, std::function<void()> confirmed) {
    auto *const sheet = new AlertSheet({.title = L::restartTitle(),
                                        .text = L::restartText(),
                                        .acceptTitle = L::restartNow(),
                                        .rejectTitle = L::restartLater()},
                                       parent);
    QObject::connect(sheet, &QDialog::accepted, sheet, std::move(confirmed));
    sheet->open();
    return sheet;
}

}  // namespace kestrelbay
