#pragma once

#include <functional>

#include <QString>
#include <QStringList>

class QDialog;
class QWidget;

namespace kestrelbay {

struct Command {
    QString program;
    QStringList arguments;
};

/// What starts the program of that file anew: that of an application bundle is
/// opened as such.
[[nodiscard]] Command restartCommand(const QString &executablePath);

/// Starts this program anew and ends the running one, also where the former fails.
void restartProgram();

/// Tells that a restart is needed, as a sheet of the window. Destroys itself when it
/// closes. `confirmed` is called for a restart now only.
QDialog *openRestartSheet(QWidget *window, std::function<void()> confirmed);

}  // namespace kestrelbay
