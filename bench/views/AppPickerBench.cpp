#include <benchmark/benchmark.h>

#include <QLineEdit>
#include <QLocale>

#include <array>
#include <cstddef>

#include "preferences/picker/AppPickerModel.h"
#include "preferences/picker/AppPickerPanel.h"
#include "views/Frame.h"
#include "views/Services.h"

namespace kestrelbay {

namespace {

constexpr int kApplications = 2'000;

/// What a user types letter by letter, and takes back: all, most, some, a few, none.
constexpr std::array<const char16_t *, 7> kTyped{u"a",      u"ap",      u"app", u"app 1",
                                                 u"app 19", u"app 19x", u""};

std::vector<InstalledApplication> manyApplications() {
    std::vector<InstalledApplication> applications;
    for (int i = 0; i < kApplications; ++i) {
        const QString number = QString::number(i);
        applications.push_back(
            {.name = QStringLiteral("App ") + number,
             .fileName = QStringLiteral("org.example.Application") + number,
             .path = QStringLiteral("/usr/share/applications/%1.desktop").arg(number)});
    }
    return applications;
}

QString typed(std::size_t step) {
    return QString::fromUtf16(kTyped[step % kTyped.size()]);
}

void findApplications(benchmark::State &state) {
    const AppPickerList list(manyApplications(), QLocale(QLocale::English));
    std::size_t step = 0;
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(list.matching(typed(step++)));
}

/// From the letter to the frame that shows what is left.
void typeLetter(benchmark::State &state) {
    Services services;
    services.catalog().setInstalledApplications(manyApplications());
    QWidget window;
    window.show();
    // It would be deleted when it is closed, and never is.
    AppPickerPanel panel(services.all(), {}, &window);
    panel.open();
    services.finishWork();
    paintFrame(panel);
    auto *const field = panel.findChild<QLineEdit *>();
    std::size_t step = 0;
    for ([[maybe_unused]] auto _ : state) {
        field->setText(typed(step++));
        paintFrame(panel);
    }
}

BENCHMARK(findApplications)->Unit(benchmark::kMillisecond);
BENCHMARK(typeLetter)->Unit(benchmark::kMillisecond);

}  // namespace

}  // namespace kestrelbay
