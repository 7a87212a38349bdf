#include "settings/Language.h"

#include "settings/SettingsKeys.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

const UserDefaults *sharedDefaults = nullptr;

}  // namespace

Language Language::current(const UserDefaults &defaults) {
    return read(defaults, settings::kAppLanguage) == Language(zh).rawValue() ? zh : en;
}

Language Language::current() {
    return sharedDefaults ? current(*sharedDefaults) : en;
}

void Language::setDefaults(const UserDefaults *defaults) {
    sharedDefaults = defaults;
}

QString Language::rawValue() const {
    return value_ == zh ? u"zh"_s : u"en"_s;
}

}  // namespace kestrelbay
