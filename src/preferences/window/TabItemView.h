#pragma once

#include <QWidget>

namespace kestrelbay {

class TabBarView;

/// One tab of the bar. Leaves clicks to the bar.
class TabItemView final : public QWidget {
    Q_OBJECT

public:
    TabItemView(const QString &title, TabBarView *bar);

    [[nodiscard]] const QString &title() const { return title_; }
    [[nodiscard]] bool isSelected() const { return isSelected_; }
    /// Only the selected tab is reached by the Tab key.
    void setSelected(bool selected);

    /// In the bar. Half pixels are kept.
    [[nodiscard]] const QRectF &frame() const { return frame_; }
    void setFrame(const QRectF &frame);

    /// As a click on it.
    void click();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    TabBarView &bar_;
    const QString title_;
    QRectF frame_;
    bool isSelected_ = false;
};

}  // namespace kestrelbay
