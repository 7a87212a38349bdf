#include "app/status/StatusItem.h"

#include <QCursor>
#include <QMenu>
#include <QPointer>
#include <QSystemTrayIcon>

#include "app/status/StatusIcon.h"
#include "platform/StatusArea.h"
#include "settings/L.h"

namespace kestrelbay {

StatusItem::StatusItem(StatusArea &area, QMenu &menu) : area_(area), menu_(menu) {
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
}

void StatusItem::updateIcon() {
    if (icon_)
        icon_->setIcon(statusIcon(shortcutsEnabled_, area_.isDark()));
}

}  // namespace kestrelbay
