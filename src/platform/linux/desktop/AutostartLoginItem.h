#pragma once

#include <optional>

#include <QString>
#include <QStringList>

#include "platform/LoginItem.h"
#include "platform/linux/desktop/AutostartEntry.h"

namespace kestrelbay {

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
        AutostartEntry::Context context;
    };

    /// Those of the running program. A program that runs out of an AppImage is
    /// started by the image: the place it is unpacked to is gone by then.
    [[nodiscard]] static Places placesOfThisProgram();

    explicit AutostartLoginItem(Places places);

    [[nodiscard]] bool isEnabled() const override;
    /// Enabling leaves an entry as it is that starts the program already. Disabling
    /// deletes the user's entry (of a symbolic link, the link), or has it hide the
    /// system's where there is one to hide.
    [[nodiscard]] std::optional<QString> setEnabled(bool enabled) override;

private:
    [[nodiscard]] bool systemStartsProgram() const;
    [[nodiscard]] std::optional<QString> removeUserEntry() const;
    template <typename Change>
    [[nodiscard]] std::optional<QString> changeUserEntry(Change change) const;

    Places places_;
    QString userEntry_;
};

}  // namespace kestrelbay
