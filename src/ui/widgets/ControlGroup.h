#pragma once

#include <QWidget>

namespace kestrelbay {

/// Holds controls that belong together, and tells screen readers what they are about.
class ControlGroup final : public QWidget {
    Q_OBJECT

public:
    ControlGroup(const QString &name, QWidget *parent);
};

}  // namespace kestrelbay
