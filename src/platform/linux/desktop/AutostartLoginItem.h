#pragma once

#include <optional>
#include <utility>

#include <QByteArray>
#include <QString>
#include <QStringList>

#include "platform/LoginItem.h"
#include "platform/linux/glib/KeyFile.h"

namespace kestrelbay {

/// What desktop entries in autostart folders say. Comments, translations and keys that
/// nothing here is said of stay as they are.
namespace autostart {

/// Whom an entry is read for, and by.
struct Context {
    /// This program's own file, absolute.
    QString executable;
    /// The names the running desktop goes by, as in XDG_CURRENT_DESKTOP.
    QStringList desktops;
};

/// The Exec line that starts the executable at this absolute path and nothing else,
/// before the escapes that every value of a desktop entry gets.
[[nodiscard]] QString execLine(const QString &executable);

/// No value when the text is not in the format of desktop entries.
[[nodiscard]] std::optional<KeyFile> parse(const QByteArray &text);

/// Will the desktop start this program for it, if maybe another copy, or through
/// a script? False also when what it starts is not there any more.
[[nodiscard]] bool startsProgram(const KeyFile &entry, const Context &context);

/// From now on it does. An Exec line that leads to the executable already stays.
void makeStartProgram(KeyFile &entry, const Context &context);

/// From now on it starts nothing, and neither does any entry of its name in a
/// folder that matters less.
void hide(KeyFile &entry);

}  // namespace autostart

/// The login item as an XDG autostart entry of the user's. One that the system has
/// for all users counts too, and is overruled by the user's without being touched.
class AutostartLoginItem final : public LoginItem {
public:
    struct Places {
        /// The user's autostart folder, which need not exist yet.
        QString userFolder;
        /// Those of the system, the one that wins first.
        QStringList systemFolders;
        /// What is to be started, and by which desktop.
        autostart::Context context;
    };

    /// Those of the running program. A program that runs out of an AppImage is
    /// started by the image: the place it is unpacked to is gone by then.
    [[nodiscard]] static Places placesOfThisProgram();

    explicit AutostartLoginItem(Places places) : places_(std::move(places)) {}

    [[nodiscard]] bool isEnabled() const override;
    /// Enabling leaves an entry as it is that starts the program already. Disabling
    /// deletes the user's entry (of a symbolic link, the link), or has it hide the
    /// system's where there is one to hide.
    [[nodiscard]] std::optional<QString> setEnabled(bool enabled) override;

private:
    [[nodiscard]] bool isStartedFrom(const QStringList &folders) const;

    const Places places_;
};

}  // namespace kestrelbay
