#pragma once

#include <functional>

#include <QString>
#include <QStringList>

class QWidget;

namespace kestrelbay {

class AlertSheet;

struct Command {
    QString program;
    QStringList arguments;
};

/// What opens the application bundle that the file belongs to, the innermost one.
[[nodiscard]] Command openCommand(const QString &executablePath);

/// The same, but only once the process has ended.
[[nodiscard]] Command afterProcess(qint64 processIdentifier, const Command &command);

/// Ends this program and has it opened anew after that. Ends it also where nothing can
/// open it.
void restartProgram();

/// Tells that a restart is needed, as a sheet over the widget's window. Destroys itself
/// when it closes. `confirmed` is called for a restart now only.
AlertSheet *openRestartSheet(QWidget *parent, std::function<void()> confirmed);

}  // namespace kestrelbay
