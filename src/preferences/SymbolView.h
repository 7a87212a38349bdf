#pragma once

#include <QColor>
#include <QIcon>
#include <QWidget>

namespace kestrelbay {

/// A picture fitted into its place in proportion: a symbol in one of the colours of
/// the user interface, which it follows, or an icon as it is.
class SymbolView : public QWidget {
    Q_OBJECT

public:
    /// One of the functions of `colors`.
    using Color = QColor (*)();

    explicit SymbolView(QWidget *parent = nullptr);

    void setSymbol(const QString &name, Color color);
    void setIcon(const QIcon &icon);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString symbol_;
    Color color_;
    QIcon icon_;
};

}  // namespace kestrelbay
