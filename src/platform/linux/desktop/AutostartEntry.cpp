#include "platform/linux/desktop/AutostartEntry.h"

#include <algorithm>
#include <utility>

#include <QFileInfo>
#include <QStandardPaths>

#include "platform/linux/applications/entries/DesktopEntry.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

constexpr const char *kEntryGroup = G_KEY_FILE_DESKTOP_GROUP;
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

AutostartEntry::AutostartEntry() : AutostartEntry(GKeyFilePtr(g_key_file_new())) {}

AutostartEntry::AutostartEntry(GKeyFilePtr file) : file_(std::move(file)) {}

std::optional<AutostartEntry> AutostartEntry::parse(const QByteArray &text) {
    GKeyFilePtr file(g_key_file_new());
    constexpr auto kKeepAll =
        static_cast<GKeyFileFlags>(G_KEY_FILE_KEEP_COMMENTS | G_KEY_FILE_KEEP_TRANSLATIONS);
    if (!g_key_file_load_from_data(file.get(), text.constData(), static_cast<gsize>(text.size()),
                                   kKeepAll, nullptr) ||
        !g_key_file_has_group(file.get(), kEntryGroup))
        return std::nullopt;
    return AutostartEntry(std::move(file));
}

bool AutostartEntry::startsProgram(const Context &context) const {
    if (!isApplication() || boolean(G_KEY_FILE_DESKTOP_KEY_HIDDEN, false) ||
        !boolean(kGnomeEnabled, true) || !isShownIn(context.desktops) || !tryExecIsThere())
        return false;
    const QString exec = string(G_KEY_FILE_DESKTOP_KEY_EXEC);
    const QString program = programFile(exec);
    return !program.isEmpty() && (isSameFile(program, context.executable) || namesProgram(exec));
}

void AutostartEntry::makeStartProgram(const Context &context) {
    if (!isApplication())
        set(G_KEY_FILE_DESKTOP_KEY_TYPE, QStringLiteral(G_KEY_FILE_DESKTOP_TYPE_APPLICATION));
    if (!has(G_KEY_FILE_DESKTOP_KEY_NAME))
        set(G_KEY_FILE_DESKTOP_KEY_NAME, u"KestrelBay"_s);
    if (!has(G_KEY_FILE_DESKTOP_KEY_ICON))
        set(G_KEY_FILE_DESKTOP_KEY_ICON, u"org.kestrelbay.KestrelBay"_s);
    if (!execLeadsTo(context.executable))
        set(G_KEY_FILE_DESKTOP_KEY_EXEC, autostartExec(context.executable));
    erase(G_KEY_FILE_DESKTOP_KEY_HIDDEN);
    if (!boolean(kGnomeEnabled, true))
        erase(kGnomeEnabled);
    if (!tryExecIsThere())
        erase(G_KEY_FILE_DESKTOP_KEY_TRY_EXEC);
    if (!isShownIn(context.desktops)) {
        erase(G_KEY_FILE_DESKTOP_KEY_ONLY_SHOW_IN);
        erase(G_KEY_FILE_DESKTOP_KEY_NOT_SHOW_IN);
    }
}

void AutostartEntry::hide() {
    if (!has(G_KEY_FILE_DESKTOP_KEY_TYPE))
        set(G_KEY_FILE_DESKTOP_KEY_TYPE, QStringLiteral(G_KEY_FILE_DESKTOP_TYPE_APPLICATION));
    if (!has(G_KEY_FILE_DESKTOP_KEY_NAME))
        set(G_KEY_FILE_DESKTOP_KEY_NAME, u"KestrelBay"_s);
    g_key_file_set_boolean(file_.get(), kEntryGroup, G_KEY_FILE_DESKTOP_KEY_HIDDEN, TRUE);
}

QByteArray AutostartEntry::text() const {
    gsize length = 0;
    const GCharPtr text(g_key_file_to_data(file_.get(), &length, nullptr));
    return {text.get(), static_cast<qsizetype>(length)};
}

bool AutostartEntry::has(const char *key) const {
    return g_key_file_has_key(file_.get(), kEntryGroup, key, nullptr) != FALSE;
}

bool AutostartEntry::boolean(const char *key, bool whenAbsent) const {
    GErrorSlot error;
    const bool value = g_key_file_get_boolean(file_.get(), kEntryGroup, key, error.out()) != FALSE;
    return error.get() ? whenAbsent : value;
}

QString AutostartEntry::string(const char *key) const {
    const GCharPtr value(g_key_file_get_string(file_.get(), kEntryGroup, key, nullptr));
    return value ? QString::fromUtf8(value.get()) : QString();
}

QStringList AutostartEntry::list(const char *key) const {
    gsize count = 0;
    const GStringList values(
        g_key_file_get_string_list(file_.get(), kEntryGroup, key, &count, nullptr));
    QStringList texts;
    for (gsize i = 0; values && i < count; ++i)
        texts.append(QString::fromUtf8(values.get()[i]));
    return texts;
}

void AutostartEntry::set(const char *key, const QString &value) {
    g_key_file_set_string(file_.get(), kEntryGroup, key, value.toUtf8().constData());
}

void AutostartEntry::erase(const char *key) {
    g_key_file_remove_key(file_.get(), kEntryGroup, key, nullptr);
}

bool AutostartEntry::isApplication() const {
    return string(G_KEY_FILE_DESKTOP_KEY_TYPE) ==
           QLatin1StringView(G_KEY_FILE_DESKTOP_TYPE_APPLICATION);
}

bool AutostartEntry::isShownIn(const QStringList &desktops) const {
    const QStringList only = list(G_KEY_FILE_DESKTOP_KEY_ONLY_SHOW_IN);
    const QStringList never = list(G_KEY_FILE_DESKTOP_KEY_NOT_SHOW_IN);
    for (const QString &desktop : desktops) {
        if (only.contains(desktop))
            return true;
        if (never.contains(desktop))
            return false;
    }
    return !has(G_KEY_FILE_DESKTOP_KEY_ONLY_SHOW_IN);
}

bool AutostartEntry::tryExecIsThere() const {
    const QString program = string(G_KEY_FILE_DESKTOP_KEY_TRY_EXEC);
    return program.isEmpty() || !QStandardPaths::findExecutable(program).isEmpty();
}

bool AutostartEntry::execLeadsTo(const QString &executable) const {
    const QString exec = string(G_KEY_FILE_DESKTOP_KEY_EXEC);
    const QString program = programFile(exec);
    if (program.isEmpty())
        return false;
    const bool isScript = isInterpreterOrWrapper(QFileInfo(program).fileName());
    return isSameFile(program, executable) || (isScript && namesProgram(exec));
}

}  // namespace kestrelbay
