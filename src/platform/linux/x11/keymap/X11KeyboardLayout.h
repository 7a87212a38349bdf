#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>

#include <QSocketNotifier>
#include <QTimer>

#include "platform/KeyboardLayout.h"
#include "platform/linux/x11/connection/XConnection.h"

namespace kestrelbay::x11 {

/// The one of the server's core keyboard. Once the server has gone, the last one stays.
class X11KeyboardLayout final : public KeyboardLayout {
public:
    /// Takes a few round trips. An empty name means the DISPLAY of the environment.
    explicit X11KeyboardLayout(const QString &displayName);

    [[nodiscard]] QString printedOn(KeyCode keyCode) const override;
    void setChangeHandler(std::function<void()> handler) override;

private:
    void drain();
    void read();

    XConnection connection_;
    std::uint8_t changeEvent_ = 0;
    std::optional<QSocketNotifier> notifier_;
    QTimer readTimer_;
    std::map<KeyCode, QString> caps_;
    std::function<void()> handler_;
};

}  // namespace kestrelbay::x11
