#pragma once

#include "platform/SystemAlerts.h"

namespace kestrelbay {

/// NSAlert.
class MacSystemAlerts final : public SystemAlerts {
public:
    [[nodiscard]] std::unique_ptr<Shown> show(const Alert &alert, NativeWindow::Id window,
                                              std::function<void(bool)> answered) override;
};

}  // namespace kestrelbay
