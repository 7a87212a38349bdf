#pragma once

#include "platform/SystemTints.h"

namespace kestrelbay {

class FakeSystemTints final : public SystemTints {
public:
    [[nodiscard]] QColor accent() const override { return accent_; }
    [[nodiscard]] QColor onAccent() const override { return onAccent_; }
    [[nodiscard]] QColor green() const override { return green_; }
    [[nodiscard]] QColor orange() const override { return orange_; }
    [[nodiscard]] QColor red() const override { return red_; }
    [[nodiscard]] QColor secondaryLabel() const override { return secondaryLabel_; }
    [[nodiscard]] QColor tertiaryLabel() const override { return tertiaryLabel_; }
    [[nodiscard]] QColor separator() const override { return separator_; }

    // For the test:
    QColor accent_ = QColor::fromRgb(0x8040c0);
    QColor onAccent_ = QColor::fromRgb(0xfefdfc);
    QColor green_ = QColor::fromRgb(0x10a020);
    QColor orange_ = QColor::fromRgb(0xf09010);
    QColor red_ = QColor::fromRgb(0xf02030);
    QColor secondaryLabel_ = QColor::fromRgb(0x606162);
    QColor tertiaryLabel_ = QColor::fromRgb(0x808182);
    QColor separator_ = QColor::fromRgb(0xd0d1d2);
};

}  // namespace kestrelbay
