#include "platform/linux/desktop/AutostartEntry.h"

#include <algorithm>
#include <utility>

#include <QFileInfo>
#include <QStandardPaths>

#include "platform/linux/applications/entries/DesktopEntry.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

constexpr const char *kGnomeEnabled = "X-GNOME-Autostart-enabled";

QString quotedWord(const QString &text) {
    QString quoted = u"\""_s;
    for (const QChar character : text) {
        if (u"\"`$\\"_s.contains(character))
            quoted += u'\\';
        quoted += character;
        if (character == u'%')
            quoted += character;
    }
    return quoted + u'"';
}

bool isPlainWord(const QString &text) {
    return std::ranges::none_of(text, [](QChar character) {
        return character.isSpace() || u"\"'\\><~|&;$*?#()`%="_s.contains(character);
    });
}

/// Starts the program that follows, whatever it is called, and becomes it. A shell
/// would need a "$", which systemd's reading of autostart entries gets wrong.
constexpr QLatin1StringView kStarter{"nice -n 0 "};

/// The file of the program that the line starts; empty when there is none.
QString programFile(const QString &exec) {
    const QString line = exec.startsWith(kStarter) ? exec.sliced(kStarter.size()) : exec;
    const QString program = programOfExec(line).replace(u"%%"_s, u"%"_s);
    return program.isEmpty() ? QString() : QStandardPaths::findExecutable(program);
}

bool isSameFile(const QString &first, const QString &second) {
    const QString real = QFileInfo(first).canonicalFilePath();
    return !real.isEmpty() && real == QFileInfo(second).canonicalFilePath();
}

/// A script or a package of an unknown form can only be told by what it names.
bool namesProgram(const QString &exec) {
    return exec.contains("kestrelbay"_L1, Qt::CaseInsensitive);
}

}  // namespace

QString autostartExec(const QString &executable) {
    if (isPlainWord(executable))
        return executable;
    // The format does not allow "=" in the name of a program, and GLib looks for the
    // program before it has resolved "%%".
    if (executable.contains(u'%') || executable.contains(u'='))
        return kStarter + quotedWord(executable);
    return quotedWord(executable);
}

AutostartEntry::AutostartEntry(KeyFile file) : file_(std::move(file)) {}

std::optional<AutostartEntry> AutostartEntry::parse(const QByteArray &text) {
    std::optional<KeyFile> file = KeyFile::parse(text, KeyFile::Keep::Everything);
    if (!file || !file->hasGroup())
        return std::nullopt;
    return AutostartEntry(std::move(*file));
}

bool AutostartEntry::startsProgram(const Context &context) const {
    if (!file_.isApplication() || file_.boolean(G_KEY_FILE_DESKTOP_KEY_HIDDEN) ||
        !file_.boolean(kGnomeEnabled, true) || !isShownIn(context.desktops) || !tryExecIsThere())
        return false;
    const QString exec = file_.string(G_KEY_FILE_DESKTOP_KEY_EXEC);
    const QString program = programFile(exec);
    return !program.isEmpty() && (isSameFile(program, context.executable) || namesProgram(exec));
}

void AutostartEntry::makeStartProgram(const Context &context) {
    if (!file_.isApplication())
        file_.set(G_KEY_FILE_DESKTOP_KEY_TYPE, QStringLiteral(G_KEY_FILE_DESKTOP_TYPE_APPLICATION));
    if (!file_.has(G_KEY_FILE_DESKTOP_KEY_NAME))
        file_.set(G_KEY_FILE_DESKTOP_KEY_NAME, u"KestrelBay"_s);
    if (!file_.has(G_KEY_FILE_DESKTOP_KEY_ICON))
        file_.set(G_KEY_FILE_DESKTOP_KEY_ICON, u"org.kestrelbay.KestrelBay"_s);
    if (!execLeadsTo(context.executable))
        file_.set(G_KEY_FILE_DESKTOP_KEY_EXEC, autostartExec(context.executable));
    file_.remove(G_KEY_FILE_DESKTOP_KEY_HIDDEN);
    if (!file_.boolean(kGnomeEnabled, true))
        file_.remove(kGnomeEnabled);
    if (!tryExecIsThere())
        file_.remove(G_KEY_FILE_DESKTOP_KEY_TRY_EXEC);
    if (!isShownIn(context.desktops)) {
        file_.remove(G_KEY_FILE_DESKTOP_KEY_ONLY_SHOW_IN);
        file_.remove(G_KEY_FILE_DESKTOP_KEY_NOT_SHOW_IN);
    }
}

void AutostartEntry::hide() {
    if (!file_.has(G_KEY_FILE_DESKTOP_KEY_TYPE))
        file_.set(G_KEY_FILE_DESKTOP_KEY_TYPE, QStringLiteral(G_KEY_FILE_DESKTOP_TYPE_APPLICATION));
    if (!file_.has(G_KEY_FILE_DESKTOP_KEY_NAME))
        file_.set(G_KEY_FILE_DESKTOP_KEY_NAME, u"KestrelBay"_s);
    file_.set(G_KEY_FILE_DESKTOP_KEY_HIDDEN, u"true"_s);
}

bool AutostartEntry::isShownIn(const QStringList &desktops) const {
    return kestrelbay::isShownIn(
        desktops, file_.list(G_KEY_FILE_DESKTOP_KEY_ONLY_SHOW_IN),
        file_.list(G_KEY_FILE_DESKTOP_KEY_NOT_SHOW_IN).value_or(QStringList()));
}

bool AutostartEntry::tryExecIsThere() const {
    const QString program = file_.string(G_KEY_FILE_DESKTOP_KEY_TRY_EXEC);
    return program.isEmpty() || !QStandardPaths::findExecutable(program).isEmpty();
}

bool AutostartEntry::execLeadsTo(const QString &executable) const {
    const QString exec = file_.string(G_KEY_FILE_DESKTOP_KEY_EXEC);
    const QString program = programFile(exec);
    if (program.isEmpty())
        return false;
    const bool isScript = isInterpreterOrWrapper(QFileInfo(program).fileName());
    return isSameFile(program, executable) || (isScript && namesProgram(exec));
}

}  // namespace kestrelbay
