#pragma once

#include <functional>

#include <QMenu>

namespace kestrelbay {

/// The menu of the status item. Its shortcuts work while it is open.
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
    void keyPressEvent(QKeyEvent *event) override;

private:
    QAction *add(const QString &title, const std::function<void()> &action,
                 const QKeySequence &shortcut = {});

    Actions actions_;
};

}  // namespace kestrelbay
