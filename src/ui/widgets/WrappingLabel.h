#pragma once

#include "ui/widgets/TextLabel.h"

namespace kestrelbay {

/// A text over as many lines as its width makes it take. A word that is wider than
/// the line, such as a path, is broken too.
class WrappingLabel final : public TextLabel {
    Q_OBJECT

public:
    WrappingLabel(const QString &text, const QFont &font, colors::Function color,
                  QWidget *parent = nullptr);

    [[nodiscard]] bool hasHeightForWidth() const override;
    [[nodiscard]] int heightForWidth(int width) const override;
    /// In one line.
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

}  // namespace kestrelbay
