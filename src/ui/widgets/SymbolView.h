#pragma once

#include <QImage>
#include <QWidget>

#include "ui/look/SystemColors.h"
#include "ui/widgets/PaintedButton.h"

namespace kestrelbay {

/// A picture fitted into its place in proportion: a symbol in one of the colours of
/// the user interface, which it follows, or an image as it is.
class SymbolView : public QWidget {
    Q_OBJECT

public:
    explicit SymbolView(QWidget *parent = nullptr);

    void setSymbol(const QString &name, colors::Function color);
    /// A square of at least as many pixels as the place has.
    void setImage(const QImage &image);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString symbol_;
    colors::Function color_;
    QImage image_;
};

/// A button that is a symbol without a border, over a faint ground while it is
/// pointed at or has the focus.
class SymbolButton : public PaintedButton {
    Q_OBJECT

public:
    SymbolButton(QString symbol, QSize symbolSize, colors::Function color,
                 QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString symbol_;
    QSize symbolSize_;
    colors::Function color_;
};

}  // namespace kestrelbay
