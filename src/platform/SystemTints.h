#pragma once

#include <QColor>

namespace kestrelbay {

/// The colours that the system's own controls have for what stands out or back, each as it is in
/// the appearance in force just now. Main thread.
class SystemTints {
public:
    virtual ~SystemTints() = default;

    /// Of what is chosen; the user's choice.
    [[nodiscard]] virtual QColor accent() const = 0;
    /// Of a text upon it.
    [[nodiscard]] virtual QColor onAccent() const = 0;
    [[nodiscard]] virtual QColor green() const = 0;
    [[nodiscard]] virtual QColor orange() const = 0;
    [[nodiscard]] virtual QColor red() const = 0;
    /// Of texts that explain, and of what matters less than those.
    [[nodiscard]] virtual QColor secondaryLabel() const = 0;
    [[nodiscard]] virtual QColor tertiaryLabel() const = 0;
    [[nodiscard]] virtual QColor separator() const = 0;
};

}  // namespace kestrelbay
