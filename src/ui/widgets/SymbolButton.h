#pragma once

#include <QAbstractButton>

#include "ui/look/SystemColors.h"

namespace kestrelbay {

/// A button that is a symbol without a border, over a faint ground while it is
/// pointed at or has the focus. Space and Return press it.
class SymbolButton : public QAbstractButton {
    Q_OBJECT

public:
    SymbolButton(QString symbol, QSize symbolSize, colors::Function color,
                 QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QString symbol_;
    QSize symbolSize_;
    colors::Function color_;
};

}  // namespace kestrelbay
