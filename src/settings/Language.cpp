#include "settings/Language.h"

#include "settings/SettingsKeys.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

Language Language::current(const UserDefaults &defaults) {
    return read(defaults, settings::kAppLanguage) == Language(zh).rawValue() ? zh : en;
}

QString Language::rawValue() const {
    return value_ == zh ? u"zh"_s : u"en"_s;
}

}  // namespace kestrelbay
