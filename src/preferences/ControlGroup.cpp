#include "preferences/ControlGroup.h"

#include "app/AccessibleFactory.h"

namespace kestrelbay {

ControlGroup::ControlGroup(const QString &name, QWidget *parent) : QWidget(parent) {
    installAccessible<ControlGroup, AccessibleWithRole<QAccessible::Grouping>>();
    setAccessibleName(name);
}

}  // namespace kestrelbay
