#pragma once

#include "ui/widgets/TextLabel.h"

namespace kestrelbay {

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

}  // namespace kestrelbay
