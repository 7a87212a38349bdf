#pragma once

#include <optional>

#include <QList>
#include <QStringList>
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

/// The tabs of the preferences side by side, one of them selected. Clicks, the arrow
/// keys, Home and End choose another one.
class TabBarView final : public QWidget {
    Q_OBJECT

public:
    explicit TabBarView(QWidget *parent = nullptr);

    /// The titles in the language in force at each call.
    [[nodiscard]] static QStringList labels();

    [[nodiscard]] const QList<TabItemView *> &itemViews() const { return itemViews_; }
    [[nodiscard]] int selectedIndex() const { return selectedIndex_; }

    /// Moves the highlight and no more. Nothing happens for an index beyond the
    /// last tab.
    void select(int index);

    /// A click at that place. Between the tabs and on the margin nothing happens.
    void clicked(QPointF location);

Q_SIGNALS:
    /// Each tab that the user chooses, also the selected one again.
    void onSelect(int index);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    [[nodiscard]] std::optional<int> indexAt(QPointF location) const;
    void choose(int index);

    QList<TabItemView *> itemViews_;
    int selectedIndex_ = 0;
    std::optional<int> pressedIndex_;
};

}  // namespace kestrelbay
