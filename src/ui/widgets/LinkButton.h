#pragma once

#include <cstdint>

#include "ui/widgets/PaintedButton.h"

namespace kestrelbay {

/// A text without a border that is pressed like a button, in the colour of links.
class LinkButton final : public PaintedButton {
    Q_OBJECT

public:
    enum class Kind : std::uint8_t {
        Action,  ///< underlined while it is pointed at or has the focus
        Help,    ///< smaller, behind a question mark, and quiet until then
    };

    explicit LinkButton(const QString &text, Kind kind = Kind::Action, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Kind kind_;
};

}  // namespace kestrelbay
