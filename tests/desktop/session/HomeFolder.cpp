#include "desktop/session/HomeFolder.h"

#include <stdexcept>

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace kestrelbay::desktop {

namespace {

constexpr const char *kDesktopEntry = R"([Desktop Entry]
Type=Application
Name=%1
Exec=sh -c "sleep 900; :" %2
NoDisplay=true
%3)";

constexpr const char *kDefaultApplications = R"([Default Applications]
inode/directory=thunar.desktop
text/plain=org.xfce.mousepad.desktop
x-scheme-handler/kestreltest=kestrel-url.desktop
)";

QByteArray desktopEntry(const char *name, const QByteArray &exec, const char *more = "") {
    return QString::fromUtf8(kDesktopEntry)
        .arg(QLatin1String(name), QString::fromUtf8(exec), QLatin1String(more))
        .toUtf8();
}

}  // namespace

HomeFolder::HomeFolder() {
    if (!folder_.isValid())
        throw std::runtime_error("no temporary folder");
    QDir().mkpath(path());
    const QString runtime = folder_.filePath(QStringLiteral("run"));
    QDir().mkpath(runtime);
    QFile::setPermissions(runtime, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);

    write(config(QStringLiteral("mimeapps.list")), kDefaultApplications);
    write(settingsPath(), R"({"onboardingCompleted":true})");
    write(applicationPath(QStringLiteral("kestrel-arguments.desktop")),
          desktopEntry("Arguments Recorder", kArgumentsRecorder));
    write(applicationPath(QStringLiteral("kestrel-url.desktop")),
          desktopEntry("URL Recorder", QByteArray(kUrlRecorder) + " %u",
                       "MimeType=x-scheme-handler/kestreltest;\n"));
    // Every shell in a terminal is replaced by a program that keeps what is typed.
    write(path(QStringLiteral("shell-start")), "exec cat > \"$HOME/typed.$$\"\n");
}

QString HomeFolder::path() const {
    return folder_.filePath(QStringLiteral("kestrel-home"));
}

QString HomeFolder::path(const QString &below) const {
    return path() + u'/' + below;
}

QString HomeFolder::config(const QString &below) const {
    return path(QStringLiteral(".config/")) + below;
}

QString HomeFolder::applicationPath(const QString &entry) const {
    return path(QStringLiteral(".local/share/applications/")) + entry;
}

QString HomeFolder::rulesPath() const {
    return config(QStringLiteral("KestrelBay/rules.json"));
}

QString HomeFolder::settingsPath() const {
    return config(QStringLiteral("KestrelBay/settings.json"));
}

void HomeFolder::addTo(QProcessEnvironment &environment) const {
    environment.insert(QStringLiteral("HOME"), path());
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), path(QStringLiteral(".config")));
    environment.insert(QStringLiteral("XDG_DATA_HOME"), path(QStringLiteral(".local/share")));
    environment.insert(QStringLiteral("XDG_CACHE_HOME"), path(QStringLiteral(".cache")));
    environment.insert(QStringLiteral("XDG_STATE_HOME"), path(QStringLiteral(".local/state")));
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), folder_.filePath(QStringLiteral("run")));
    environment.insert(QStringLiteral("SHELL"), QStringLiteral("/bin/sh"));
    environment.insert(QStringLiteral("ENV"), path(QStringLiteral("shell-start")));

    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    // No accessibility bus: toolkits would wait for it at every start.
    environment.insert(QStringLiteral("NO_AT_BRIDGE"), QStringLiteral("1"));
    environment.insert(QStringLiteral("GTK_A11Y"), QStringLiteral("none"));
    environment.insert(QStringLiteral("GVFS_DISABLE_FUSE"), QStringLiteral("1"));
    // No sound of the machine's: there is no server for it, and what PipeWire's plugin for ALSA
    // allocates in a search for one is lost when it is unloaded.
    environment.insert(QStringLiteral("CANBERRA_DRIVER"), QStringLiteral("null"));
}

void HomeFolder::write(const QString &path, const QByteArray &contents) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size())
        throw std::runtime_error("cannot write " + path.toStdString());
}

QByteArray HomeFolder::read(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace kestrelbay::desktop
