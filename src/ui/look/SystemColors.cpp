#include "ui/look/SystemColors.h"

#include <QGuiApplication>
#include <QPalette>

#include "platform/SystemSettings.h"

namespace kestrelbay {

namespace {

/// A colour in both appearances.
struct Dynamic {
    QRgb light;
    QRgb dark;

    [[nodiscard]] QColor in(ColorScheme scheme) const {
        return QColor::fromRgba(scheme == ColorScheme::Dark ? dark : light);
    }
};

constexpr Dynamic kLabel{0xDF000000, 0xE6FFFFFF};
constexpr Dynamic kSecondaryLabel{0x9E000000, 0xA6FFFFFF};
constexpr Dynamic kTertiaryLabel{0x80000000, 0x80FFFFFF};
constexpr Dynamic kDisabledLabel{0x59000000, 0x59FFFFFF};
constexpr Dynamic kSeparator{0x1F000000, 0x26FFFFFF};
constexpr Dynamic kAccent{0xFF0A6CDB, 0xFF1C70DC};
constexpr Dynamic kLink{0xFF0A62C9, 0xFF5AA9FF};
constexpr Dynamic kGreen{0xFF1E7B34, 0xFF30D158};
constexpr Dynamic kRed{0xFFC9001A, 0xFFFF6961};
constexpr Dynamic kOrange{0xFFB25000, 0xFFFFB340};
constexpr Dynamic kWindow{0xFFF4F4F5, 0xFF262628};
constexpr Dynamic kField{0xFFFFFFFF, 0xFF1C1C1E};
constexpr Dynamic kButton{0xFFFFFFFF, 0xFF48484B};
constexpr Dynamic kHud{0xFFEFEFF1, 0xFF2C2C2E};
constexpr Dynamic kTranslucentHud{0xE0F2F2F4, 0xD6262628};

QColor current(const Dynamic &color) {
    return color.in(colors::isDark() ? ColorScheme::Dark : ColorScheme::Light);
}

}  // namespace

namespace colors {

bool isDark() {
    const QPalette palette = QGuiApplication::palette();
    return palette.color(QPalette::WindowText).lightnessF() >
           palette.color(QPalette::Window).lightnessF();
}

QColor label() {
    return current(kLabel);
}
QColor secondaryLabel() {
    return current(kSecondaryLabel);
}
QColor tertiaryLabel() {
    return current(kTertiaryLabel);
}
QColor separator() {
    return current(kSeparator);
}
QColor controlAccent() {
    return current(kAccent);
}
QColor link() {
    return current(kLink);
}
QColor systemGreen() {
    return current(kGreen);
}
QColor systemRed() {
    return current(kRed);
}
QColor systemOrange() {
    return current(kOrange);
}
QColor window() {
    return current(kWindow);
}
QColor field() {
    return current(kField);
}
QColor hud(bool translucent) {
    return current(translucent ? kTranslucentHud : kHud);
}

}  // namespace colors

QPalette systemPalette(ColorScheme scheme) {
    const auto color = [scheme](const Dynamic &dynamic) { return dynamic.in(scheme); };
    QPalette palette(color(kButton), color(kWindow));
    palette.setColor(QPalette::WindowText, color(kLabel));
    palette.setColor(QPalette::Text, color(kLabel));
    palette.setColor(QPalette::ButtonText, color(kLabel));
    palette.setColor(QPalette::ToolTipText, color(kLabel));
    palette.setColor(QPalette::ToolTipBase, color(kHud));
    palette.setColor(QPalette::PlaceholderText, color(kTertiaryLabel));
    palette.setColor(QPalette::Base, color(kField));
    palette.setColor(QPalette::AlternateBase, color(kWindow));
    palette.setColor(QPalette::Highlight, color(kAccent));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, color(kLink));
    palette.setColor(QPalette::LinkVisited, color(kLink));
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, color(kDisabledLabel));
    return palette;
}

}  // namespace kestrelbay
