#pragma once

#include <functional>

#include <QMenu>
#include <QPoint>

namespace kestrelbay {

/// The menu of the status item. Its shortcuts work while it is open. A click chooses an
/// entry, except where the pointer was when the menu opened: there it is the second half of a
/// double click on the icon, and only closes the menu.
class StatusMenu final : public QMenu {
    Q_OBJECT

public:
    struct Actions {
        std::function<void()> toggleAllShortcuts;
        std::function<void()> openPreferences;
        std::function<void()> openOnboarding;
        std::function<void()> showAbout;
        std::function<void()> quit;
    };

    /// The tag of the entry that turns all shortcuts off and on.
    static constexpr int kEnabledTag = 100;

    explicit StatusMenu(Actions actions);

    /// All entries anew, in the language in force.
    void build(bool shortcutsEnabled);

    /// Null when there is none of that tag.
    [[nodiscard]] QAction *itemWithTag(int tag) const;

    /// What the entry for all shortcuts reads.
    [[nodiscard]] static QString enabledTitle(bool shortcutsEnabled);

protected:
    void showEvent(QShowEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    /// What a click there chooses, if anything.
    [[nodiscard]] QAction *entryAt(const QMouseEvent &event) const;
    QAction *add(const QString &title, const std::function<void()> &action,
                 const QKeySequence &shortcut = {});

    Actions actions_;
    QPoint openedAt_;
    bool isPressed_ = false;
};

}  // namespace kestrelbay
