#pragma once

#include <QWidget>

#include "ui/widgets/AccessibleFactory.h"

namespace kestrelbay {

/// A window that stands for itself, which screen readers announce by its title. What Qt makes of
/// a plain widget is no window to them.
class ProgramWindow : public QWidget {
    Q_OBJECT

public:
    explicit ProgramWindow(Qt::WindowFlags flags) : QWidget(nullptr, flags) {
        installAccessible<ProgramWindow, AccessibleWithRole<QAccessible::Window>>();
    }
};

}  // namespace kestrelbay
