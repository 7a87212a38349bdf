#include "ui/look/SystemColors.h"

#include <QGuiApplication>
#include <QPalette>

#include "platform/SystemSettings.h"

namespace kestrelbay {

namespace {

constexpr colors::Dynamic kDisabledLabel{0x59000000, 0x59FFFFFF};
constexpr colors::Dynamic kButton{0xFFFFFFFF, 0xFF48484B};
constexpr colors::Dynamic kHud{0xFFEFEFF1, 0xFF2C2C2E};
constexpr colors::Dynamic kTranslucentHud{0xE0F2F2F4, 0xD6262628};

}  // namespace

namespace colors {

QColor Dynamic::operator()() const {
    return QColor::fromRgba(isDark() ? dark : light);
}

bool isDark() {
    const QPalette palette = QGuiApplication::palette();
    return palette.color(QPalette::WindowText).lightnessF() >
           palette.color(QPalette::Window).lightnessF();
}

QColor toast(bool translucent) {
    return translucent ? kTranslucentHud() : kHud();
}

}  // namespace colors

QPalette systemPalette(ColorScheme scheme) {
    const auto color = [scheme](const colors::Dynamic &of) {
        return QColor::fromRgba(scheme == ColorScheme::Dark ? of.dark : of.light);
    };
    QPalette palette(color(kButton), color(colors::window));
    palette.setColor(QPalette::WindowText, color(colors::label));
    palette.setColor(QPalette::Text, color(colors::label));
    palette.setColor(QPalette::ButtonText, color(colors::label));
    palette.setColor(QPalette::ToolTipText, color(colors::label));
    palette.setColor(QPalette::ToolTipBase, color(kHud));
    palette.setColor(QPalette::PlaceholderText, color(colors::tertiaryLabel));
    palette.setColor(QPalette::Base, color(colors::field));
    palette.setColor(QPalette::AlternateBase, color(colors::window));
    palette.setColor(QPalette::Highlight, color(colors::controlAccent));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, color(colors::link));
    palette.setColor(QPalette::LinkVisited, color(colors::link));
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, color(kDisabledLabel));
    return palette;
}

}  // namespace kestrelbay
