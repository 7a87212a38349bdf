#pragma once

#include <QAbstractButton>

namespace kestrelbay {

/// A secondary action that looks like a link: a text without a border, underlined
/// while it is pointed at or has the focus. The space bar presses it; Return is
/// left to the window's primary button.
class LinkButton final : public QAbstractButton {
    Q_OBJECT

public:
    explicit LinkButton(const QString &text, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

}  // namespace kestrelbay
