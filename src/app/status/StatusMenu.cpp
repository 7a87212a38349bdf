#include "app/status/StatusMenu.h"

#include <QApplication>
#include <QCursor>
#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>
#include <utility>

#include "settings/L.h"

namespace kestrelbay {

StatusMenu::StatusMenu(Actions actions) : actions_(std::move(actions)) {}

void StatusMenu::build(bool shortcutsEnabled) {
    // The same menu with other entries: desktops that show a copy of it follow its
    // changes, but not every one a change of menu.
    clear();
    add(enabledTitle(shortcutsEnabled), actions_.toggleAllShortcuts)->setData(kEnabledTag);
    addSeparator();
    add(L::preferencesEntry(), actions_.openPreferences, Qt::CTRL | Qt::Key_Comma);
    add(L::welcomeGuideEntry(), actions_.openOnboarding);
    add(L::aboutKestrelBay(), actions_.showAbout);
    addSeparator();
    add(L::quit(), actions_.quit, Qt::CTRL | Qt::Key_Q);
}

QAction *StatusMenu::itemWithTag(int tag) const {
    const QList<QAction *> all = actions();
    const auto item = std::ranges::find_if(all, [tag](const QAction *action) {
        return action->data().isValid() && action->data().toInt() == tag;
    });
    return item == all.end() ? nullptr : *item;
}

QString StatusMenu::enabledTitle(bool shortcutsEnabled) {
    return shortcutsEnabled ? L::disableAllShortcuts() : L::enableAllShortcuts();
}

void StatusMenu::showEvent(QShowEvent *event) {
    openedAt_ = QCursor::pos();
    isPressed_ = false;
    QMenu::showEvent(event);
}

void StatusMenu::keyPressEvent(QKeyEvent *event) {
    for (QAction *action : actions()) {
        if (!action->shortcut().isEmpty() &&
            action->shortcut() == QKeySequence(event->keyCombination())) {
            close();
            action->trigger();
            return;
        }
    }
    QMenu::keyPressEvent(event);
}

// Qt 6.8 takes a click for one without a movement, which only closes the menu, by the place
// where this program last had the pointer. The click on a panel's icon was not there, so that
// it errs when few movements come in between, as with a finger or over a remote connection.
void StatusMenu::mousePressEvent(QMouseEvent *event) {
    QAction *const entry = entryAt(*event);
    isPressed_ = entry != nullptr;
    if (entry)
        setActiveAction(entry);
    else
        QMenu::mousePressEvent(event);
}

void StatusMenu::mouseReleaseEvent(QMouseEvent *event) {
    QAction *const entry = entryAt(*event);
    if (!isPressed_ || !entry) {
        QMenu::mouseReleaseEvent(event);
        return;
    }
    isPressed_ = false;
    const QPoint way = event->globalPosition().toPoint() - openedAt_;
    close();
    if (way.manhattanLength() > QApplication::startDragDistance())
        entry->trigger();
}

QAction *StatusMenu::entryAt(const QMouseEvent &event) const {
    QAction *const action = actionAt(event.position().toPoint());
    return action && !action->isSeparator() && action->isEnabled() ? action : nullptr;
}

QAction *StatusMenu::add(const QString &title, const std::function<void()> &action,
                         const QKeySequence &shortcut) {
    QAction *item = addAction(title);
    item->setShortcut(shortcut);
    item->setShortcutVisibleInContextMenu(true);
    // What an entry does may build the menu anew, and with it end this connection.
    connect(item, &QAction::triggered, this, [action] {
        const std::function<void()> run = action;
        run();
    });
    return item;
}

}  // namespace kestrelbay
