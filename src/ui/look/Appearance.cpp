#include "ui/look/Appearance.h"

#include <QApplication>

#include "platform/SystemSettings.h"
#include "ui/look/SystemColors.h"
#include "ui/look/SystemStyle.h"

namespace kestrelbay {

Appearance::Appearance(SystemSettings &settings) : settings_(settings) {
    if (!settings_.colorScheme())
        return;
    QApplication::setStyle(new SystemStyle);  // the application owns it
    apply();
    settings_.setAppearanceHandler([this] { apply(); });
}

Appearance::~Appearance() {
    settings_.setAppearanceHandler({});
}

void Appearance::apply() const {
    if (const std::optional<ColorScheme> scheme = settings_.colorScheme())
        QApplication::setPalette(systemPalette(*scheme));
}

}  // namespace kestrelbay
