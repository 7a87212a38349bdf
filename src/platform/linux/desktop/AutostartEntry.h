#pragma once

#include <optional>

#include <QByteArray>
#include <QString>
#include <QStringList>

#include "platform/linux/glib/KeyFile.h"

namespace kestrelbay {

/// The Exec line that starts the executable at this absolute path and nothing else,
/// before the escapes that every value of a desktop entry gets.
[[nodiscard]] QString autostartExec(const QString &executable);

/// A desktop entry of an autostart folder. Comments, translations and keys that
/// nothing here is said of stay as they are.
class AutostartEntry {
public:
    /// Whom the entry is read for, and by.
    struct Context {
        /// This program's own file, absolute.
        QString executable;
        /// The names the running desktop goes by, as in XDG_CURRENT_DESKTOP.
        QStringList desktops;
    };

    /// Starts nothing yet.
    AutostartEntry() = default;

    /// No value when the text is not in the format of desktop entries.
    [[nodiscard]] static std::optional<AutostartEntry> parse(const QByteArray &text);

    /// Will the desktop start this program for it, if maybe another copy, or through
    /// a script? False also when what it starts is not there any more.
    [[nodiscard]] bool startsProgram(const Context &context) const;

    /// From now on it does. An Exec line that leads to the executable already stays.
    void makeStartProgram(const Context &context);

    /// From now on it starts nothing, and neither does any entry of its name in a
    /// folder that matters less.
    void hide();

    [[nodiscard]] QByteArray text() const { return file_.text(); }

private:
    explicit AutostartEntry(KeyFile file);

    [[nodiscard]] bool isShownIn(const QStringList &desktops) const;
    [[nodiscard]] bool tryExecIsThere() const;
    [[nodiscard]] bool execLeadsTo(const QString &executable) const;

    KeyFile file_;
};

}  // namespace kestrelbay
