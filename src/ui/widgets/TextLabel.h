#pragma once

#include <QColor>
#include <QLabel>

namespace kestrelbay {

/// A text of the user interface. Its colour follows the appearance.
class TextLabel : public QLabel {
    Q_OBJECT

public:
    /// One of the functions of `colors`.
    using Color = QColor (*)();

    TextLabel(const QString &text, const QFont &font, Color color, QWidget *parent = nullptr);

    void setColor(Color color);

protected:
    void changeEvent(QEvent *event) override;

private:
    void applyColor();

    Color color_;
};

}  // namespace kestrelbay
