#pragma once

#include <QLabel>

#include "ui/look/SystemColors.h"

namespace kestrelbay {

/// A text of the user interface. Its colour follows the appearance.
class TextLabel : public QLabel {
    Q_OBJECT

public:
    TextLabel(const QString &text, const QFont &font, colors::Function color,
              QWidget *parent = nullptr);

    void setColor(colors::Function color);

protected:
    void changeEvent(QEvent *event) override;

private:
    void applyColor();

    colors::Function color_;
};

}  // namespace kestrelbay
