#pragma once

#include <QAccessible>
#include <QMetaEnum>
#include <QStringList>
#include <QWidget>

namespace kestrelbay {

namespace accessible {

inline QString roleName(QAccessible::Role role) {
    return QString::fromLatin1(QMetaEnum::fromType<QAccessible::Role>().valueToKey(role));
}

/// What a screen reader says of one thing: "CheckBox: Enable Mail (checked)".
inline QString said(const QAccessibleInterface &thing) {
    const QAccessible::State state = thing.state();
    QStringList remarks;
    if (state.checked)
        remarks += QStringLiteral("checked");
    if (state.selected)
        remarks += QStringLiteral("selected");
    if (state.disabled)
        remarks += QStringLiteral("disabled");
    if (state.focusable)
        remarks += QStringLiteral("focusable");
    // Popups have their name from a label beside them.
    for (const auto &[label, relation] : thing.relations(QAccessible::Label)) {
        if (thing.role() == QAccessible::ComboBox)
            remarks += QStringLiteral("of ") + label->text(QAccessible::Name);
    }
    const QString text =
        roleName(thing.role()) + QStringLiteral(": ") + thing.text(QAccessible::Name);
    return remarks.isEmpty()
               ? text
               : text + QStringLiteral(" (%1)").arg(remarks.join(QStringLiteral(", ")));
}

inline void collect(QAccessibleInterface *thing, QStringList &lines) {
    if (!thing || !thing->isValid() || thing->state().invisible)
        return;
    const bool isBar = thing->role() == QAccessible::ScrollBar;
    if (!isBar && (!thing->text(QAccessible::Name).isEmpty() || thing->state().focusable))
        lines += said(*thing);
    for (int i = 0; i < thing->childCount(); ++i) {
        QAccessibleInterface *const child = thing->child(i);
        // Each is to find its way back.
        if (child && thing->indexOfChild(child) != i)
            lines += QStringLiteral("lost: ") + said(*child);
        collect(child, lines);
    }
}

}  // namespace accessible

/// All that a screen reader finds in the window, in its order: what has a name or takes
/// the keyboard, scroll bars apart.
inline QStringList accessibleTree(QWidget &window) {
    QStringList lines;
    accessible::collect(QAccessible::queryAccessibleInterface(&window), lines);
    return lines;
}

/// The widgets in view that take the keyboard and of which a screen reader cannot say
/// what they are for.
inline QStringList namelessControls(const QWidget &window) {
    QStringList found;
    for (QWidget *widget : window.findChildren<QWidget *>()) {
        if (widget->focusPolicy() == Qt::NoFocus || !widget->isVisible() || widget->focusProxy())
            continue;
        const QAccessibleInterface *const thing = QAccessible::queryAccessibleInterface(widget);
        if (!thing || thing->text(QAccessible::Name).isEmpty())
            found += QString::fromLatin1(widget->metaObject()->className());
    }
    return found;
}

}  // namespace kestrelbay
