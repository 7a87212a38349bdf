#include "preferences/rules/RulesMenu.h"

#include <QKeySequence>
#include <QMenu>
#include <QShortcut>

#include <optional>

#include "preferences/rules/RulesModel.h"
#include "settings/L.h"
#include "ui/list/RowListView.h"

namespace kestrelbay {

struct RulesMenu::Entry {
    QString title;
    QKeySequence keys;
    const std::function<void(const QUuid &)> &run;
    /// Where the keys are pressed; none where the list knows them by itself.
    std::optional<Qt::ShortcutContext> context = Qt::WidgetWithChildrenShortcut;
};

namespace {

void add(QMenu &menu, const QString &title, const std::function<void()> &run,
         const QKeySequence &keys = {}) {
    QAction *const action = menu.addAction(title);
    action->setShortcut(keys);
    action->setShortcutVisibleInContextMenu(true);
    QObject::connect(action, &QAction::triggered, &menu, run);
}

QKeySequence undoKeys() {
    return Qt::CTRL | Qt::Key_Z;
}

}  // namespace

RulesMenu::RulesMenu(RowListView &list, const RulesModel &model, Commands commands)
    : QObject(&list), list_(list), model_(model), commands_(std::move(commands)) {
    connect(&list, &RowListView::menuRequested, this, &RulesMenu::open);
    addShortcuts();
}

std::vector<RulesMenu::Entry> RulesMenu::ruleEntries() const {
    return {
        {L::recordHotkey(), Qt::Key_F2, commands_.record},
        {L::advancedOptions(), Qt::Key_Return, commands_.showOptions, std::nullopt},
        {L::showInFolder(), Qt::CTRL | Qt::Key_R, commands_.showInFolder},
        {L::duplicateRule(), Qt::CTRL | Qt::Key_D, commands_.duplicate},
        // In a row the key belongs to the field that has the focus.
        {L::ruleDeleteName(), Qt::Key_Delete, commands_.remove, Qt::WidgetShortcut},
    };
}

void RulesMenu::addShortcuts() {
    for (const Entry &entry : ruleEntries()) {
        if (!entry.context)
            continue;
        auto *const shortcut = new QShortcut(entry.keys, &list_);
        shortcut->setContext(*entry.context);
        shortcut->setAutoRepeat(false);
        connect(shortcut, &QShortcut::activated, this, [this, &run = entry.run] {
            if (const auto id = model_.idAt(list_.selectedRow()))
                run(*id);
        });
    }
    connect(new QShortcut(undoKeys(), &list_), &QShortcut::activated, this, commands_.undoDeletion);
    // What keyboards without a menu key have instead.
    connect(new QShortcut(Qt::SHIFT | Qt::Key_F10, &list_), &QShortcut::activated, &list_,
            &RowListView::requestMenu);
}

void RulesMenu::open(const QPoint &place, int row) {
    auto *const menu = new QMenu(&list_);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (const auto id = model_.idAt(row)) {
        if (commands_.needsSides(*id))
            add(*menu, L::useEitherSide(), [this, id = *id] { commands_.useEitherSide(id); });
        for (const Entry &entry : ruleEntries())
            add(
                *menu, entry.title, [&run = entry.run, id = *id] { run(id); }, entry.keys);
        menu->addSeparator();
    }
    if (commands_.canUndoDeletion())
        add(*menu, L::undoDeletion(), commands_.undoDeletion, undoKeys());
    add(*menu, L::importEntry(), commands_.importRules);
    add(*menu, L::exportEntry(), commands_.exportRules);
    menu->popup(place);
}

}  // namespace kestrelbay
