#include "ui/widgets/ControlGroup.h"

#include "ui/widgets/AccessibleFactory.h"

namespace kestrelbay {

ControlGroup::ControlGroup(const QString &name, QWidget *parent) : QWidget(parent) {
    installAccessible<ControlGroup, AccessibleWithRole<QAccessible::Grouping>>();
    setAccessibleName(name);
}

}  // namespace kestrelbay
