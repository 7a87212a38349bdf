#pragma once

#include <QWidget>

namespace kestrelbay {

class TabBarView;

/// What fills the preferences window: the tab bar, and below it the room for the
/// view of one tab.
class ContainerViewController final : public QWidget {
    Q_OBJECT

public:
    explicit ContainerViewController(QWidget *parent = nullptr);

    [[nodiscard]] TabBarView *tabBarView() const { return tabBarView_; }
    [[nodiscard]] QWidget *contentArea() const { return contentArea_; }

    /// Has the view fill the content area, and owns it from now on.
    void setChild(QWidget *child);

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    TabBarView *tabBarView_;
    QWidget *contentArea_;
};

}  // namespace kestrelbay
