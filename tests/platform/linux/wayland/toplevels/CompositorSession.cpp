#include "platform/linux/wayland/toplevels/CompositorSession.h"

#include <csignal>
#include <stdexcept>

#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace kestrelbay::testing {

CompositorSession::CompositorSession(const QString &program)
    : WaylandSession(program), isKWin_(program == u"kwin_wayland"), program_(program) {
    const QString telling = home().path(u"telling"_s);
    write(telling, tellingEnvironment().toUtf8() + '\n');
    if (isKWin_) {
        setVariable(u"KWIN_COMPOSE"_s, u"Q"_s);
        setVariable(u"QT_QUICK_BACKEND"_s, u"software"_s);
        setVariable(u"KWIN_WAYLAND_NO_PERMISSION_CHECKS"_s, u"1"_s);
        // The installed one has a capability that an ordinary user's processes may not be let have;
        // copies have none.
        program_ = home().path(program_);
        QFile::copy(QStandardPaths::findExecutable(program), program_);
        arguments_ = {u"--virtual"_s, u"--xwayland"_s, u"--no-lockscreen"_s, u"sh "_s + telling};
    } else {
        setVariable(u"WLR_BACKENDS"_s, u"headless"_s);
        setVariable(u"WLR_LIBINPUT_NO_DEVICES"_s, u"1"_s);
        setVariable(u"WLR_RENDERER"_s, u"pixman"_s);
        if (program == u"sway")
            write(home().config(u"sway/config"_s), "exec sh " + telling.toUtf8() + '\n');
        else
            arguments_ = {u"-s"_s, u"sh "_s + telling};
    }
    startBus();
    begin();
}

void CompositorSession::begin() {
    startCompositor(program_, arguments_, [this] { return QFile::exists(environmentFile()); });
    takeVariables({u"WAYLAND_DISPLAY"_s, u"DISPLAY"_s, u"XAUTHORITY"_s});
}

desktop::Command CompositorSession::command(const QString &program,
                                            const QStringList &arguments) const {
    return isKWin_ ? desktop::Command{.program = program, .arguments = arguments}
                   : WaylandSession::command(program, arguments);
}

void CompositorSession::openWindow(const QString &name) {
    if (isKWin_)
        start(u"xterm"_s, {u"-class"_s, name, u"-name"_s, name, u"-e"_s, u"cat"_s});
    else
        start(u"foot"_s, {u"--app-id"_s, name, u"--title"_s, u"cat"_s, u"cat"_s});
}

void CompositorSession::closeWindow(const QString &name) const {
    for (const pid_t process : processes().withArgument(name))
        ::kill(process, SIGTERM);
}

void CompositorSession::restartCompositor() {
    killCompositor();
    begin();
}

desktop::Keyboard &CompositorSession::keyboard() {
    throw std::logic_error("no keys are pressed in this session");
}

void CompositorSession::screenshot(const QString & /*path*/) {}

}  // namespace kestrelbay::testing
