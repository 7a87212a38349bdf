#pragma once

#include <QAbstractButton>
#include <QColor>

namespace kestrelbay {

/// A button that is a symbol without a border, over a faint ground while it is
/// pointed at or has the focus. Space and Return press it.
class SymbolButton : public QAbstractButton {
    Q_OBJECT

public:
    /// One of the functions of `colors`.
    using Color = QColor (*)();

    SymbolButton(QString symbol, QSize symbolSize, Color color, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QString symbol_;
    QSize symbolSize_;
    Color color_;
};

}  // namespace kestrelbay
