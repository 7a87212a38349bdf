#pragma once

#include <functional>
#include <optional>
#include <vector>

#include <QStringList>
#include <QWidget>

namespace kestrelbay {

class TabItemView;

/// The tabs of the preferences side by side, one of them selected. Clicks, the arrow
/// keys, Home and End choose another one.
class TabBarView final : public QWidget {
    Q_OBJECT

public:
    explicit TabBarView(QWidget *parent = nullptr);

    /// The titles in the language in force at each call.
    [[nodiscard]] static QStringList labels();

    [[nodiscard]] const std::vector<TabItemView *> &itemViews() const { return itemViews_; }
    [[nodiscard]] int selectedIndex() const { return selectedIndex_; }

    /// Moves the highlight and no more. Nothing happens for an index beyond the
    /// last tab.
    void select(int index);

    /// Called with the index of each tab that the user chooses.
    void setOnSelect(std::function<void(int)> onSelect);

    /// A click at that place. Between the tabs and on the margin nothing happens.
    void clicked(QPointF location);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    [[nodiscard]] std::optional<int> indexAt(QPointF location) const;
    void choose(int index);

    std::vector<TabItemView *> itemViews_;
    int selectedIndex_ = 0;
    std::function<void(int)> onSelect_;
    std::optional<int> pressedIndex_;
};

}  // namespace kestrelbay
