#pragma once

#include <QWidget>

namespace kestrelbay {

class TextLabel;

/// A small tinted badge with a text. Its natural size is 4 px wider than the text on
/// either side, and 15 px high.
class ArgsBadgeView : public QWidget {
    Q_OBJECT

public:
    explicit ArgsBadgeView(QWidget *parent = nullptr);

    /// The argument is what the text stands for, for those who hear it.
    void setText(const QString &text, const QString &argument);
    [[nodiscard]] QString text() const;
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    TextLabel *label_;
};

}  // namespace kestrelbay
