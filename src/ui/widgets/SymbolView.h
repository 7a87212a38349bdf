#pragma once

#include <QImage>
#include <QWidget>

#include "ui/look/SystemColors.h"

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

}  // namespace kestrelbay
