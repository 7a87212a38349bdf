#pragma once

#include "platform/SystemTints.h"

namespace kestrelbay {

class FakeSystemTints final : public SystemTints {
public:
    [[nodiscard]] QColor accent() const override { return accent_; }
    [[nodiscard]] QColor green() const override { return green_; }
    [[nodiscard]] QColor orange() const override { return orange_; }
    [[nodiscard]] QColor red() const override { return red_; }

    // For the test:
    QColor accent_ = QColor::fromRgb(0x8040c0);
    QColor green_ = QColor::fromRgb(0x10a020);
    QColor orange_ = QColor::fromRgb(0xf09010);
    QColor red_ = QColor::fromRgb(0xf02030);
};

}  // namespace kestrelbay
