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

/// A text of one line that is cut to its width. What is cut is told by the tooltip
/// and to screen readers in full.
class ElidedLabel : public TextLabel {
    Q_OBJECT

public:
    ElidedLabel(const QFont &font, colors::Function color, Qt::TextElideMode mode,
                QWidget *parent = nullptr);

    void setFullText(const QString &text);
    [[nodiscard]] const QString &fullText() const { return fullText_; }
    /// What the whole text takes.
    [[nodiscard]] int fullWidth() const;

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void elide();

    Qt::TextElideMode mode_;
    QString fullText_;
};

/// A text over as many lines as its width makes it take, of about the same length. A word
/// that is wider than the line, such as a path, is broken too.
class WrappingLabel final : public TextLabel {
    Q_OBJECT

public:
    WrappingLabel(const QString &text, const QFont &font, colors::Function color,
                  QWidget *parent = nullptr);

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    /// In one line.
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

}  // namespace kestrelbay
