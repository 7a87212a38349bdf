#pragma once

#include <QPixmap>
#include <QWidget>

class QPushButton;

namespace kestrelbay {

class LinkButton;
class TextLabel;

/// A picture of the program's resources, edge to edge in an area of 468 by 200
/// device-independent pixels. The area stays empty when there is no such picture.
class HeroImage final : public QWidget {
    Q_OBJECT

public:
    /// The file's name without folder and extension.
    explicit HeroImage(const QString &name);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QPixmap pixmap_;
};

/// One step of the first-run guide: a picture, what it says, and two buttons. Its
/// texts are in the language in force when it is built.
class OnboardingStep final : public QWidget {
    Q_OBJECT

public:
    /// Of every step, in device-independent pixels.
    static constexpr QSize kSize{468, 468};

    /// The program lives in the menu bar or tray.
    static OnboardingStep *welcome(QWidget *parent);
    /// The program needs to see keys. The only step with a status label.
    static OnboardingStep *permission(QWidget *parent);
    /// The same where the desktop has to be extended for it.
    static OnboardingStep *permissionByExtension(QWidget *parent);
    /// It sees them already. Without a link.
    static OnboardingStep *permissionThere(QWidget *parent);
    static OnboardingStep *done(bool permissionGranted, bool hasTray, QWidget *parent);

    /// Return presses it wherever the focus is in the step.
    [[nodiscard]] QPushButton &primaryButton() const { return *primaryButton_; }
    /// Hidden where the step has none.
    [[nodiscard]] LinkButton &link() const { return *link_; }
    /// Hidden until somebody shows it; null where the step has none.
    [[nodiscard]] TextLabel *statusLabel() const { return statusLabel_; }

protected:
    void keyPressEvent(QKeyEvent *event) override;
    /// A Return that is held for long would run through all steps.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Contents {
        QString hero;
        QString title;
        QString body;
        QString tip{};
        QString status{};
        QString primary;
        QString link{};
    };
    OnboardingStep(const Contents &contents, QWidget *parent);

    QPushButton *primaryButton_;
    LinkButton *link_;
    TextLabel *statusLabel_ = nullptr;
};

}  // namespace kestrelbay
