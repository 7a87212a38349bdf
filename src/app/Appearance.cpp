#include "app/Appearance.h"

#include <QApplication>
#include <QPalette>

#include "app/SystemColors.h"
#include "app/SystemStyle.h"
#include "platform/SystemSettings.h"

namespace kestrelbay {

Appearance::Appearance(SystemSettings &settings) : settings_(settings) {
    if (!settings_.colorScheme())
        return;
    QApplication::setStyle(new SystemStyle);  // the application owns it
    apply();
    settings_.setColorSchemeHandler([this] { apply(); });
}

Appearance::~Appearance() {
    settings_.setColorSchemeHandler({});
}

void Appearance::apply() const {
    if (const std::optional<ColorScheme> scheme = settings_.colorScheme())
        QApplication::setPalette(systemPalette(*scheme));
}

}  // namespace kestrelbay
