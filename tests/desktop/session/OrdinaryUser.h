#pragma once

#include <QString>
#include <QStringList>

namespace kestrelbay::desktop {

// Compositors refuse to run for root. There "nobody" has the session and all that is started in
// it; everyone else has it themselves.

struct Command {
    QString program;
    QStringList arguments;
};

/// What starts the program as that user.
[[nodiscard]] Command asOrdinaryUser(const QString &program, const QStringList &arguments = {});
/// Makes the folder theirs, with all that is in it.
void giveToOrdinaryUser(const QString &folder);
/// May they run it, wherever it lies?
[[nodiscard]] bool ordinaryUserCanRun(const QString &program);

/// This process is that user to whoever asks, as the session bus does of those who connect, until
/// it goes.
class ActingAsOrdinaryUser {
public:
    ActingAsOrdinaryUser();
    ~ActingAsOrdinaryUser();
    ActingAsOrdinaryUser(const ActingAsOrdinaryUser &) = delete;
    ActingAsOrdinaryUser &operator=(const ActingAsOrdinaryUser &) = delete;

private:
    const unsigned before_;
};

}  // namespace kestrelbay::desktop
