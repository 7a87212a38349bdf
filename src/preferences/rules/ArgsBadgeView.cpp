#include "preferences/rules/ArgsBadgeView.h"

#include <QFontDatabase>
#include <QPainter>

#include <cmath>

#include "ui/look/Drawing.h"
#include "ui/look/SystemColors.h"
#include "ui/widgets/TextLabel.h"

namespace kestrelbay {

namespace {

constexpr int kBadgeFontSize = 9;
constexpr int kPadding = 4;
constexpr int kBadgeHeight = 15;
constexpr qreal kBadgeRadius = 3;
constexpr float kGroundAlpha = 0.18F;

QFont badgeFont() {
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPixelSize(kBadgeFontSize);
    font.setWeight(QFont::Normal);
    return font;
}

}  // namespace

ArgsBadgeView::ArgsBadgeView(QWidget *parent)
    : QWidget(parent), label_(new TextLabel(QString(), badgeFont(), colors::link, this)) {
    label_->setAlignment(Qt::AlignCenter);
    label_->setAttribute(Qt::WA_TransparentForMouseEvents);
}

void ArgsBadgeView::setText(const QString &text, const QString &argument) {
    label_->setText(text);
    label_->setAccessibleName(argument);
    updateGeometry();
}

QString ArgsBadgeView::text() const {
    return label_->text();
}

QSize ArgsBadgeView::sizeHint() const {
    const qreal width = QFontMetricsF(label_->font()).horizontalAdvance(label_->text());
    return {static_cast<int>(std::ceil(width)) + 2 * kPadding, kBadgeHeight};
}

void ArgsBadgeView::paintEvent(QPaintEvent * /*event*/) {
    QPainter painter(this);
    drawRounded(painter, rect(), kBadgeRadius, withAlpha(colors::controlAccent(), kGroundAlpha));
}

void ArgsBadgeView::resizeEvent(QResizeEvent * /*event*/) {
    label_->setGeometry(rect().adjusted(kPadding, 0, -kPadding, 0));
}

}  // namespace kestrelbay
