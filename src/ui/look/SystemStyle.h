#pragma once

#include <QProxyStyle>

namespace kestrelbay {

class SystemSettings;

/// How controls look where the desktop has no look of its own for Qt programs:
/// flat and rounded, in the colours of `colors`. What it does not draw is
/// Fusion's.
class SystemStyle final : public QProxyStyle {
    Q_OBJECT

public:
    SystemStyle();

    using QProxyStyle::polish;
    void polish(QWidget *widget) override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                            QPainter *painter, const QWidget *widget) const override;
    [[nodiscard]] QSize sizeFromContents(ContentsType type, const QStyleOption *option,
                                         const QSize &contents,
                                         const QWidget *widget) const override;
    [[nodiscard]] QRect subElementRect(SubElement element, const QStyleOption *option,
                                       const QWidget *widget) const override;
    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption *option,
                                  const QWidget *widget) const override;
    [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                                QStyleHintReturn *returned) const override;
};

/// Gives the user interface the look of the desktop and follows it between light and
/// dark. Where Qt does both by itself, it leaves everything as it is.
class Appearance {
public:
    /// Takes effect at once. The settings have to outlive it, and it the widgets.
    explicit Appearance(SystemSettings &settings);
    ~Appearance();
    Appearance(const Appearance &) = delete;
    Appearance &operator=(const Appearance &) = delete;

private:
    void apply() const;

    SystemSettings &settings_;
};

}  // namespace kestrelbay
