#include "fakes/FakeSystemSettings.h"
#include "fakes/FakeSystemTray.h"
#include "platform/SystemSettingsContract.h"
#include "platform/SystemTrayContract.h"

namespace kestrelbay::testing {
namespace {

class FakeChoice {
public:
    SystemSettings &settings() { return settings_; }
    void choose(ColorScheme scheme) { settings_.setColorScheme(scheme); }
    void chooseAccent(const QColor &color) { settings_.setAccentColor(color); }
    void chooseContrast(bool isHigh) { settings_.setContrastHigh(isHigh); }
    void settle() {}

private:
    FakeSystemSettings settings_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Fake, SystemSettingsContract, FakeChoice);

class FakePanel {
public:
    FakePanel() { area_.setAvailable(false); }

    SystemTray &area() { return area_; }
    void bring() { area_.setAvailable(true); }
    void setDark(bool dark) { area_.setDark(dark); }
    bool eventually(const std::function<bool()> &condition) { return condition(); }
    void settle() {}

private:
    FakeSystemTray area_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Fake, SystemTrayContract, FakePanel);

}  // namespace
}  // namespace kestrelbay::testing
