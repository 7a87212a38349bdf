#pragma once

#include <QColor>
#include <QWidget>

class QPushButton;

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
    void setBackground(const QColor &color);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QWidget *control_;
    QColor background_{Qt::transparent};
};

/// The control of a row that has something done.
[[nodiscard]] QPushButton *makeSettingButton(const QString &title);

}  // namespace kestrelbay
