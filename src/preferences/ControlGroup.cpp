#include "preferences/ControlGroup.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace kestrelbay {

namespace {

QAccessibleInterface *makeAccessible(const QString & /*className*/, QObject *object) {
    auto *const group = qobject_cast<ControlGroup *>(object);
    return group ? new QAccessibleWidget(group, QAccessible::Grouping) : nullptr;
}

void installAccessibility() {
    static const bool isInstalled = (QAccessible::installFactory(makeAccessible), true);
    Q_UNUSED(isInstalled)
}

}  // namespace

ControlGroup::ControlGroup(const QString &name, QWidget *parent) : QWidget(parent) {
    installAccessibility();
    setAccessibleName(name);
}

}  // namespace kestrelbay
