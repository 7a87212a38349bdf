#pragma once

#include <functional>

#include "ui/windows/Sheet.h"

namespace kestrelbay {

/// Asks whether the rule of an application shall go.
class DeleteConfirmationSheet final : public AlertSheet {
    Q_OBJECT

public:
    /// Shows it as a sheet of the window. Destroys itself when it closes. `confirmed` is
    /// called for Delete only.
    static DeleteConfirmationSheet *open(QWidget *window, const QString &appName,
                                         std::function<void()> confirmed);

private:
    using AlertSheet::AlertSheet;
};

}  // namespace kestrelbay
