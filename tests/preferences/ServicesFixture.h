#pragma once

#include "core/ManagerFixture.h"
#include "fakes/FakePreferencesServices.h"
#include "settings/Language.h"

namespace kestrelbay {

/// What the preferences work with, all of it faked but the rules, their file, and what
/// has no side but this one.
class ServicesFixture : public ManagerFixture, protected FakePreferencesServices {
protected:
    ServicesFixture() { Language::setDefaults(&defaults_); }
    ~ServicesFixture() override { Language::setDefaults(nullptr); }

    [[nodiscard]] QString storageDirectory() const { return folder_.path(); }

    [[nodiscard]] PreferencesServices services(Timers &timers, DispatchQueue &mainQueue) {
        return servicesFor(manager(), timers, mainQueue);
    }
    [[nodiscard]] PreferencesServices services() { return servicesFor(manager()); }

    void choose(Language language) {
        defaults_.setString(QStringLiteral("appLanguage"), language.rawValue());
    }
    void changeLanguage(Language language) {
        choose(language);
        center_.post(notifications::kLanguageDidChange);
    }
};

}  // namespace kestrelbay
