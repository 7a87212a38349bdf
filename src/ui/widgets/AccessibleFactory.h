#pragma once

#include <QAccessible>
#include <QAccessibleWidget>
#include <QWidget>

namespace kestrelbay {

/// From now on assistive programs meet widgets of this type as the Interface, which is
/// made of a pointer to one. To be called as often as one likes: Qt takes it once.
template <class Widget, class Interface>
void installAccessible() {
    QAccessible::installFactory(
        [](const QString & /*className*/, QObject *object) -> QAccessibleInterface * {
            auto *const widget = qobject_cast<Widget *>(object);
            return widget ? new Interface(widget) : nullptr;
        });
}

/// A widget with nothing to tell but what it is.
template <QAccessible::Role kRole>
class AccessibleWithRole : public QAccessibleWidget {
public:
    explicit AccessibleWithRole(QWidget *widget) : QAccessibleWidget(widget, kRole) {}
};

/// Holds controls that belong together, and tells screen readers what they are about.
class ControlGroup final : public QWidget {
    Q_OBJECT

public:
    ControlGroup(const QString &name, QWidget *parent) : QWidget(parent) {
        installAccessible<ControlGroup, AccessibleWithRole<QAccessible::Grouping>>();
        setAccessibleName(name);
    }
};

}  // namespace kestrelbay
