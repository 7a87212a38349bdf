#pragma once

#include <QIcon>
#include <QIconEngine>
#include <QString>

namespace kestrelbay {

/// Paints the icon that a desktop entry names, by theme or by file, at any size;
/// the theme's generic application icon when there is none of that name.
class ApplicationIconEngine : public QIconEngine {
public:
    explicit ApplicationIconEngine(QString name) : name_(std::move(name)) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override;
    [[nodiscard]] QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    [[nodiscard]] QIconEngine *clone() const override { return new ApplicationIconEngine(name_); }
    [[nodiscard]] QString key() const override { return QStringLiteral("KestrelBayApplication"); }
    [[nodiscard]] bool isNull() override { return false; }

private:
    [[nodiscard]] const QIcon &resolved();

    QString name_;
    QString theme_;
    QIcon icon_;
    bool isResolved_ = false;
};

}  // namespace kestrelbay
