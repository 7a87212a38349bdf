#pragma once

#include <memory>
#include <vector>

#include <QObject>
#include <QVariantAnimation>

#include "tasks/Timers.h"

namespace kestrelbay {

class SettingRow;

/// Draws the eye to a row: its background flashes twice in orange, beginning at
/// once, and is then as invisible as before. Belongs to the row. Main thread.
class RowFlash final : public QObject {
    Q_OBJECT

public:
    RowFlash(SettingRow *row, Timers &timers);

private:
    void fadeTo(float alpha);

    SettingRow &row_;
    QVariantAnimation fade_;
    std::vector<std::unique_ptr<Timers::Timer>> steps_;
};

}  // namespace kestrelbay
