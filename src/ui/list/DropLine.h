#pragma once

#include <QWidget>

namespace kestrelbay {

/// The line between two rows at which a drag would drop: a ring, then a line.
class DropLine final : public QWidget {
    Q_OBJECT

public:
    explicit DropLine(QWidget *parent);

    /// Shows it centred on y, moved as far as it takes to be inside the parent.
    void showAt(int y, int left, int width);

protected:
    void paintEvent(QPaintEvent *event) override;
};

}  // namespace kestrelbay
