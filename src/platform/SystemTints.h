#pragma once

#include <QColor>

namespace kestrelbay {

/// The colours that the system's own controls have for what stands out, each as it is in the
/// appearance in force just now. Main thread.
class SystemTints {
public:
    virtual ~SystemTints() = default;

    /// Of what is chosen; the user's choice.
    [[nodiscard]] virtual QColor accent() const = 0;
    [[nodiscard]] virtual QColor green() const = 0;
    [[nodiscard]] virtual QColor orange() const = 0;
    [[nodiscard]] virtual QColor red() const = 0;
};

}  // namespace kestrelbay
