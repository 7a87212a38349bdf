#pragma once

#include <memory>
#include <vector>

#include <QColor>
#include <QVariantAnimation>
#include <QWidget>

#include "tasks/Timers.h"

namespace kestrelbay {

/// One setting: its title, a line or more that explain it, and its control at the
/// trailing edge, if it has one. The control is named after the texts for those who
/// do not see them.
class SettingRow final : public QWidget {
    Q_OBJECT

public:
    SettingRow(const QString &title, const QString &subtitle, QWidget *control);

    /// Null where there is none.
    [[nodiscard]] QWidget *control() const { return control_; }

    /// Invisible by default.
    [[nodiscard]] const QColor &background() const { return background_; }

    /// Draws the eye to the row: its background flashes twice in orange, beginning at
    /// once, and is then as invisible as before.
    void flash(Timers &timers);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void fadeTo(float alpha);

    QWidget *control_;
    QColor background_{Qt::transparent};
    QVariantAnimation fade_;
    std::vector<std::unique_ptr<Timers::Timer>> flashSteps_;
};

}  // namespace kestrelbay
