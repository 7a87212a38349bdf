#pragma once

#include <cstdint>

#include <QVariantAnimation>

#include "ui/widgets/PaintedButton.h"

namespace kestrelbay {

/// A checkable button with a knob that slides to the trailing side when it is on.
/// Keys and clicks toggle it.
class Switch final : public PaintedButton {
    Q_OBJECT

public:
    /// Small is 38 × 20, Regular 44 × 26, the room for the focus ring included.
    enum class Size : std::uint8_t { Regular, Small };

    explicit Switch(Size size = Size::Regular, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

    /// Where the knob is drawn just now, within this widget.
    [[nodiscard]] QRectF knobRect() const;

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    [[nodiscard]] QRectF trackRect() const;
    void slideKnob();

    Size size_;
    /// From 0 for off to 1 for on.
    qreal knobPosition_ = 0;
    QVariantAnimation slide_;
};

}  // namespace kestrelbay
