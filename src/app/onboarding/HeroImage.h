#pragma once

#include <QPixmap>
#include <QWidget>

namespace kestrelbay {

/// A picture of the program's resources, edge to edge in an area of 468 by 200
/// device-independent pixels. The area stays empty when there is no such picture.
class HeroImage final : public QWidget {
    Q_OBJECT

public:
    /// The file's name without folder and extension.
    explicit HeroImage(const QString &name, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QPixmap pixmap_;
};

}  // namespace kestrelbay
