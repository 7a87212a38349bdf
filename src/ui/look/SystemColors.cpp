#include "ui/look/SystemColors.h"

#include <QGuiApplication>
#include <QPalette>

#include "platform/SystemTints.h"
#include "ui/look/Contrast.h"
#include "ui/look/Drawing.h"

namespace kestrelbay {

namespace {

/// What WCAG 2.1 asks of texts (success criteria 1.4.3 and 1.4.6).
constexpr double kTextContrast = 4.5;
constexpr double kHighTextContrast = 7;

struct Tone {
    QRgb light;
    QRgb dark;

    [[nodiscard]] QColor in(bool isDark) const { return QColor::fromRgba(isDark ? dark : light); }
};

/// How much there is of black or white.
struct Ink {
    float light;
    float dark;
    float inHighContrast;

    [[nodiscard]] QColor in(bool isDark, bool isContrastHigh) const {
        return withAlpha(isDark ? Qt::white : Qt::black, isContrastHigh ? inHighContrast
                                                         : isDark       ? dark
                                                                        : light);
    }
};

constexpr Ink kLabel{0.875F, 0.9F, 1};
constexpr Ink kSecondaryLabel{0.62F, 0.65F, 0.9F};
constexpr Ink kTertiaryLabel{0.5F, 0.5F, 0.8F};
constexpr Ink kDisabledLabel{0.35F, 0.35F, 0.6F};
constexpr Ink kSeparator{0.12F, 0.15F, 0.6F};

constexpr Tone kAccent{0xFF0A6CDB, 0xFF1C70DC};
constexpr Tone kGreen{0xFF1E7B34, 0xFF30D158};
constexpr Tone kRed{0xFFC9001A, 0xFFFF6961};
constexpr Tone kOrange{0xFFB25000, 0xFFFFB340};
constexpr Tone kWindow{0xFFF4F4F5, 0xFF262628};
constexpr Tone kField{0xFFFFFFFF, 0xFF1C1C1E};
constexpr Tone kButton{0xFFFFFFFF, 0xFF48484B};
constexpr Tone kHud{0xFFEFEFF1, 0xFF2C2C2E};
constexpr Tone kTranslucentHud{0xE0F2F2F4, 0xD6262628};

const SystemTints *systemTints = nullptr;
bool isHighContrastAsked = false;

QColor fromPalette(QPalette::ColorRole role) {
    return QGuiApplication::palette().color(QPalette::Active, role);
}

QColor inked(const Ink &ink) {
    return ink.in(colors::isDark(), isHighContrastAsked);
}

double textContrast(bool isContrastHigh) {
    return isContrastHigh ? kHighTextContrast : kTextContrast;
}

/// A tone as a text on a toast's ground and on the window's, which may be a grey of any style.
QColor asText(const Tone &tone) {
    const double contrast = textContrast(isHighContrastAsked);
    return legible(legible(tone.in(colors::isDark()), colors::window(), contrast),
                   colors::toast(false), contrast);
}

}  // namespace

namespace colors {

bool isDark() {
    return fromPalette(QPalette::WindowText).lightnessF() >
           fromPalette(QPalette::Window).lightnessF();
}

bool isContrastHigh() {
    return isHighContrastAsked;
}

QColor label() {
    return fromPalette(QPalette::WindowText);
}

QColor secondaryLabel() {
    return systemTints ? systemTints->secondaryLabel() : inked(kSecondaryLabel);
}

QColor tertiaryLabel() {
    return systemTints ? systemTints->tertiaryLabel() : inked(kTertiaryLabel);
}

QColor separator() {
    return systemTints ? systemTints->separator() : inked(kSeparator);
}

QColor controlAccent() {
    return systemTints ? systemTints->accent() : fromPalette(QPalette::Highlight);
}

QColor onAccent() {
    return systemTints ? systemTints->onAccent() : fromPalette(QPalette::HighlightedText);
}

QColor focusRing() {
    if (!isHighContrastAsked)
        return controlAccent();
    return legible(legible(controlAccent(), window(), kTextContrast), fromPalette(QPalette::Button),
                   kTextContrast);
}

QColor link() {
    return systemTints ? systemTints->accent() : fromPalette(QPalette::Link);
}

QColor systemGreen() {
    return systemTints ? systemTints->green() : asText(kGreen);
}

QColor systemRed() {
    return systemTints ? systemTints->red() : asText(kRed);
}

QColor systemOrange() {
    return systemTints ? systemTints->orange() : asText(kOrange);
}

QColor window() {
    return fromPalette(QPalette::Window);
}

QColor field() {
    return fromPalette(QPalette::Base);
}

QColor toast(bool translucent) {
    return (translucent ? kTranslucentHud : kHud).in(isDark());
}

void setContrastHigh(bool isHigh) {
    isHighContrastAsked = isHigh;
}

void setSystemTints(const SystemTints *tints) {
    systemTints = tints;
}

}  // namespace colors

QPalette systemPalette(ColorScheme scheme, const std::optional<QColor> &accent,
                       bool isContrastHigh) {
    const bool isDark = scheme == ColorScheme::Dark;
    const QColor label = kLabel.in(isDark, isContrastHigh);
    const QColor highlight =
        legible(accent.value_or(kAccent.in(isDark)), Qt::white, textContrast(isContrastHigh));
    // Of the grounds that texts stand on, the one nearest to them.
    const QColor link = legible(highlight, kHud.in(isDark), textContrast(isContrastHigh));
    QPalette palette(kButton.in(isDark), kWindow.in(isDark));
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        palette.setColor(role, label);
    palette.setColor(QPalette::ToolTipBase, kHud.in(isDark));
    palette.setColor(QPalette::PlaceholderText, kTertiaryLabel.in(isDark, isContrastHigh));
    palette.setColor(QPalette::Base, kField.in(isDark));
    palette.setColor(QPalette::AlternateBase, kWindow.in(isDark));
    palette.setColor(QPalette::Highlight, highlight);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, link);
    palette.setColor(QPalette::LinkVisited, link);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, kDisabledLabel.in(isDark, isContrastHigh));
    return palette;
}

}  // namespace kestrelbay
