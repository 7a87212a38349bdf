#pragma once

#include <memory>

#include <QWidget>

#include "fixtures/ActiveWindow.h"
#include "fixtures/ServicesFixture.h"
#include "preferences/rules/ApplicationIconCache.h"
#include "preferences/rules/HotkeyHolderCache.h"

namespace kestrelbay {

/// What a rule row and its recorder need, and a window that has the keyboard.
class RowFixture : public ServicesFixture {
protected:
    RowFixture() { window_->resize(700, 200); }

    void showWindow() {
        window_->show();
        ASSERT_TRUE(activate(*window_));
        window_->setFocus();
    }

    std::unique_ptr<ApplicationIconCache> icons_ =
        std::make_unique<ApplicationIconCache>(services());
    std::unique_ptr<HotkeyHolderCache> holders_ = std::make_unique<HotkeyHolderCache>(services());
    std::unique_ptr<QWidget> window_ = std::make_unique<QWidget>();
};

}  // namespace kestrelbay
