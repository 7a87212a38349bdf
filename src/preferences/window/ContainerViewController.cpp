#include "preferences/window/ContainerViewController.h"

#include <QVBoxLayout>

#include "preferences/window/TabBarView.h"

namespace kestrelbay {

namespace {

constexpr int kBarTop = 12;
constexpr QSize kBarSize{330, 32};
constexpr int kBarToContent = 8;

}  // namespace

ContainerViewController::ContainerViewController(QWidget *parent)
    : QWidget(parent), tabBarView_(new TabBarView(this)), contentArea_(new QWidget(this)) {
    auto *const layout = new QVBoxLayout(contentArea_);
    layout->setContentsMargins({});
}

void ContainerViewController::setChild(QWidget *child) {
    contentArea_->layout()->addWidget(child);
    child->show();
}

void ContainerViewController::resizeEvent(QResizeEvent * /*event*/) {
    tabBarView_->setGeometry(QRect(QPoint((width() - kBarSize.width()) / 2, kBarTop), kBarSize));
    const int top = kBarTop + kBarSize.height() + kBarToContent;
    contentArea_->setGeometry(0, top, width(), height() - top);
}

}  // namespace kestrelbay
