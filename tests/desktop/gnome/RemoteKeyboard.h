#pragma once

#include <cstdint>

#include <QDBusConnection>
#include <QString>

#include "desktop/display/Keyboard.h"
#include "desktop/gnome/ShellScript.h"

namespace kestrelbay::desktop {

/// Plugged into a mutter, as its remote desktop has one.
class RemoteKeyboard : public Keyboard {
public:
    /// Throws std::runtime_error when mutter lets nobody.
    explicit RemoteKeyboard(const QDBusConnection &bus);
    ~RemoteKeyboard() override;
    RemoteKeyboard(const RemoteKeyboard &) = delete;
    RemoteKeyboard &operator=(const RemoteKeyboard &) = delete;

    void press(std::uint8_t xKeycode) override { send(xKeycode, true); }
    void release(std::uint8_t xKeycode) override { send(xKeycode, false); }

private:
    void send(std::uint8_t xKeycode, bool pressed);

    const QDBusConnection bus_;
    const ShellScript script_;
    QString session_;
};

}  // namespace kestrelbay::desktop
