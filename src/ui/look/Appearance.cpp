#include "ui/look/Appearance.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>

#include "platform/SystemSettings.h"
#include "ui/look/SystemColors.h"
#include "ui/look/SystemStyle.h"

namespace kestrelbay {

Appearance::Appearance(SystemSettings &settings, bool isStyleNamed) : settings_(settings) {
    if (!settings_.colorScheme() || isStyleNamed ||
        QApplication::style()->name() != QLatin1StringView("fusion"))
        return;
    QApplication::setStyle(new SystemStyle);  // the application owns it
    apply();
    settings_.setAppearanceHandler([this] { apply(); });
}

Appearance::~Appearance() {
    settings_.setAppearanceHandler({});
    colors::setContrastHigh(false);
}

void Appearance::apply() const {
    const std::optional<ColorScheme> scheme = settings_.colorScheme();
    if (!scheme)
        return;
    colors::setContrastHigh(settings_.isContrastHigh());
    QApplication::setPalette(
        systemPalette(*scheme, settings_.accentColor(), settings_.isContrastHigh()));
}

}  // namespace kestrelbay
