#include "app/status/StatusItem.h"

#include <QCursor>
#include <QIconEngine>
#include <QMenu>
#include <QPainter>
#include <QPixmap>
#include <QPointer>
#include <QSystemTrayIcon>

#include <algorithm>

#include "platform/SystemTray.h"
#include "settings/L.h"
#include "ui/look/Symbols.h"

namespace kestrelbay {

namespace {

// Of a menu bar or tray slot of 22 points, the symbol gets 16.
constexpr qreal kSymbolShare = 16.0 / 22.0;
constexpr float kEdgeOpacity = 0.8F;

class StatusIconEngine final : public QIconEngine {
public:
    StatusIconEngine(QString symbol, std::optional<bool> onDark, QString themeName)
        : symbol_(std::move(symbol)), onDark_(onDark), themeName_(std::move(themeName)) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode /*mode*/,
               QIcon::State /*state*/) override {
        const bool light = onDark_.value_or(false);
        const int side = std::max(
            1, qRound(std::min(rect.width(), rect.height()) * (onDark_ ? 1.0 : kSymbolShare)));
        QRect place(0, 0, side, side);
        place.moveCenter(rect.center());
        if (onDark_) {
            const QPixmap edge = symbolIn(light ? Qt::black : Qt::white, side);
            painter->setOpacity(kEdgeOpacity);
            for (const QPoint offset : {QPoint(-1, 0), QPoint(1, 0), QPoint(0, -1), QPoint(0, 1)})
                painter->drawPixmap(place.topLeft() + offset, edge);
            painter->setOpacity(1);
        }
        painter->drawPixmap(place.topLeft(), symbolIn(light ? Qt::white : Qt::black, side));
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, pixmap.rect(), mode, state);
        return pixmap;
    }

    /// What is sent to desktops that draw the icon themselves.
    QList<QSize> availableSizes(QIcon::Mode /*mode*/, QIcon::State /*state*/) override {
        return {{16, 16}, {22, 22}, {24, 24}, {32, 32}};
    }

    QString iconName() override { return themeName_; }

    [[nodiscard]] QIconEngine *clone() const override { return new StatusIconEngine(*this); }

private:
    [[nodiscard]] QPixmap symbolIn(const QColor &color, int side) const {
        return symbolPixmap(symbol_, {side, side}, color, 1);
    }

    QString symbol_;
    std::optional<bool> onDark_;
    QString themeName_;
};

QString symbolOf(bool enabled) {
    return enabled ? QStringLiteral("bolt.fill") : QStringLiteral("bolt.slash.fill");
}

}  // namespace

QIcon statusIcon(bool enabled, std::optional<bool> onDark, const QString &themeName) {
    QIcon icon(new StatusIconEngine(symbolOf(enabled), onDark, themeName));
    icon.setIsMask(!onDark);
    return icon;
}

QString statusIconName(bool enabled) {
    return enabled ? QStringLiteral("org.kestrelbay.KestrelBay.bolt-symbolic")
                   : QStringLiteral("org.kestrelbay.KestrelBay.bolt.slash-symbolic");
}

StatusItem::StatusItem(SystemTray &area, QMenu &menu) : area_(area), menu_(menu) {
    area_.setDarkHandler([this] { updateIcon(); });
    area_.whenAvailable([self = QPointer(this)] {
        if (self)
            self->appear();
    });
}

StatusItem::~StatusItem() {
    area_.setDarkHandler({});
}

void StatusItem::setShortcutsEnabled(bool enabled) {
    shortcutsEnabled_ = enabled;
    updateIcon();
    if (icon_)
        area_.drawSymbol(symbolOf(shortcutsEnabled_), QString());
}

void StatusItem::appear() {
    icon_ = std::make_unique<QSystemTrayIcon>();
    updateIcon();
    icon_->setToolTip(L::programName());
    icon_->setContextMenu(&menu_);
    if (!area_.opensMenus()) {
        connect(icon_.get(), &QSystemTrayIcon::activated, this,
                [this](QSystemTrayIcon::ActivationReason reason) {
                    if (reason == QSystemTrayIcon::Trigger)
                        menu_.popup(QCursor::pos());
                });
    }
    icon_->show();
    // Qt makes the system's item only now.
    area_.drawSymbol(symbolOf(shortcutsEnabled_), L::programName());
}

void StatusItem::updateIcon() {
    if (!icon_)
        return;
    const QString name = statusIconName(shortcutsEnabled_);
    icon_->setIcon(
        statusIcon(shortcutsEnabled_, area_.isDark(), area_.tintsIcon(name) ? name : QString()));
}

}  // namespace kestrelbay
