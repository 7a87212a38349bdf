#pragma once

#include <algorithm>
#include <memory>

#include <QLabel>

#include "fixtures/ActiveWindow.h"
#include "fixtures/ServicesFixture.h"
#include "preferences/advanced/AdvancedSettingsViewController.h"
#include "preferences/advanced/SettingRow.h"

namespace kestrelbay {

/// The tab by itself, as a window of its own.
class AdvancedSettingsFixture : public ServicesFixture {
protected:
    AdvancedSettingsViewController &tab() {
        if (!tab_) {
            tab_ = std::make_unique<AdvancedSettingsViewController>(services());
            tab_->setRestart([this] { ++restarts_; });
        }
        return *tab_;
    }
    void show() {
        tab().show();
        ASSERT_TRUE(activate(tab()));
    }

    /// From top to bottom.
    QList<SettingRow *> rows() {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QList<SettingRow *> all = tab().findChildren<SettingRow *>();
        std::ranges::sort(all, {}, &SettingRow::y);
        return all;
    }
    static QString subtitle(const SettingRow *row) {
        return row->findChildren<QLabel *>().at(1)->text();
    }

    int restarts_ = 0;

private:
    std::unique_ptr<AdvancedSettingsViewController> tab_;
};

}  // namespace kestrelbay
