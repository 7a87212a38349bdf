#pragma once

#include <QAbstractButton>

namespace kestrelbay {

/// A quiet link to an explanation: a question mark in a circle and a text, in the colour
/// of links while it is pointed at or has the focus. The space bar presses it.
class HelpLinkButton final : public QAbstractButton {
    Q_OBJECT

public:
    explicit HelpLinkButton(const QString &text, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

}  // namespace kestrelbay
