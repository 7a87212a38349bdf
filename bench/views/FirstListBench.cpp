#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <unistd.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QListView>
#include <QTemporaryDir>

#include <chrono>
#include <functional>

#include "platform/linux/applications/entries/ApplicationIndexKeeper.h"
#include "platform/linux/applications/icons/LinuxApplicationCatalog.h"
#include "preferences/picker/AppPickerPanel.h"
#include "tasks/DispatchQueue.h"
#include "views/Frame.h"
#include "views/Services.h"

namespace kestrelbay {

namespace {

constexpr int kEntries = 2'000;

/// The applications of a user who has many, each with an icon of its own: every second one is
/// drawn, as on most desktops, the others are pictures of another size than that of the list.
class ManyEntries {
public:
    ManyEntries() {
        QDir(folder_.path()).mkpath(QStringLiteral("applications"));
        for (const char *sort : {"48x48", "scalable"})
            QDir(folder_.path())
                .mkpath(QStringLiteral("icons/hicolor/%1/apps").arg(QLatin1String(sort)));
        write(QStringLiteral("icons/hicolor/index.theme"),
              "[Icon Theme]\nName=H\nDirectories=48x48/apps,scalable/apps\n"
              "[48x48/apps]\nSize=48\nType=Fixed\n"
              "[scalable/apps]\nSize=64\nMinSize=8\nMaxSize=512\nType=Scalable\n");
        for (int i = 0; i < kEntries; ++i)
            addApplication(i);
        qputenv("XDG_DATA_HOME", QFile::encodeName(folder_.path()));
        qputenv("XDG_DATA_DIRS", QFile::encodeName(folder_.filePath(QStringLiteral("none"))));
    }

    /// Has the system read every file from the disk the next time.
    void forget() const {
        for (const QString &file : files_) {
            const int descriptor =
                ::open(QFile::encodeName(file).constData(), O_RDONLY | O_CLOEXEC);
            ::fsync(descriptor);
            ::posix_fadvise(descriptor, 0, 0, POSIX_FADV_DONTNEED);
            ::close(descriptor);
        }
    }

private:
    void write(const QString &path, const QByteArray &content) {
        files_.append(folder_.filePath(path));
        QFile file(files_.last());
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write %s", qPrintable(files_.last()));
    }
    void addApplication(int number) {
        const QByteArray name = "app" + QByteArray::number(number);
        write(
            QStringLiteral("applications/org.example.%1.desktop").arg(QLatin1String(name)),
            "[Desktop Entry]\nType=Application\nName=Application " + QByteArray::number(number) +
                "\nName[de]=Anwendung\nName[zh_CN]=\xe5\xba\x94\xe7\x94\xa8\nComment=One of many\n"
                "Exec=sh -c true %U\nTryExec=sh\nIcon=" +
                name + "\nCategories=Utility;\nMimeType=text/plain;text/html;\n");
        if (number % 2 == 0) {
            write(QStringLiteral("icons/hicolor/scalable/apps/%1.svg").arg(QLatin1String(name)),
                  "<svg xmlns='http://www.w3.org/2000/svg' width='64' height='64'>"
                  "<circle cx='32' cy='32' r='30' fill='#3060c0'/>"
                  "<path d='M16 48 L32 12 L48 48 Z' fill='#ffffff' opacity='0.8'/></svg>");
            return;
        }
        const QString picture = folder_.filePath(
            QStringLiteral("icons/hicolor/48x48/apps/%1.png").arg(QLatin1String(name)));
        QImage icon(48, 48, QImage::Format_ARGB32);
        icon.fill(QColor::fromHsv(number % 360, 200, 200));
        icon.save(picture);
        files_.append(picture);
    }

    QTemporaryDir folder_;
    QStringList files_;
};

/// What the picker works with: the system's own applications and queues, beside fakes.
PreferencesServices servicesWith(const PreferencesServices &fakes, ApplicationCatalog &catalog,
                                 DispatchQueue &mainQueue, DispatchQueue &backgroundQueue) {
    return {.manager = fakes.manager,
            .defaults = fakes.defaults,
            .catalog = catalog,
            .workspace = fakes.workspace,
            .sounds = fakes.sounds,
            .systemSettings = fakes.systemSettings,
            .nativeWindow = fakes.nativeWindow,
            .screenLock = fakes.screenLock,
            .hotkeyHolders = fakes.hotkeyHolders,
            .keyboardLayout = fakes.keyboardLayout,
            .launchAtLogin = fakes.launchAtLogin,
            .notifications = fakes.notifications,
            .timers = fakes.timers,
            .mainQueue = mainQueue,
            .backgroundQueue = backgroundQueue,
            .addresses = fakes.addresses,
            .showToast = fakes.showToast};
}

void waitUntil(const std::function<bool()> &isThere) {
    while (!isThere())
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

/// From the order to open the list of applications for the first time since start-up until
/// their names are painted; and until the last icon is there.
void openFirstList(benchmark::State &state) {
    using Seconds = std::chrono::duration<double>;
    const ManyEntries entries;
    const ApplicationIndexKeeper index;
    static_cast<void>(index.current());  // as the program does at its start
    LinuxApplicationCatalog catalog([&index] { return index.current(); });
    Services fakes;
    MainQueue mainQueue;
    ThreadPoolQueue backgroundQueue;
    const PreferencesServices services =
        servicesWith(fakes.all(), catalog, mainQueue, backgroundQueue);
    QWidget window;
    window.show();
    Seconds icons{0};
    for ([[maybe_unused]] auto _ : state) {
        entries.forget();
        const auto start = std::chrono::steady_clock::now();
        // It would be deleted when it is closed, and never is.
        AppPickerPanel panel(services, {}, &window);
        panel.open();
        const QAbstractItemModel &list = *panel.findChild<QListView *>()->model();
        waitUntil([&] { return list.rowCount() == kEntries; });
        paintFrame(panel);
        state.SetIterationTime(Seconds(std::chrono::steady_clock::now() - start).count());
        waitUntil([&] {
            const QModelIndex last = list.index(kEntries - 1, 0);
            return !last.data(Qt::DecorationRole).value<QImage>().isNull();
        });
        icons += std::chrono::steady_clock::now() - start;
    }
    state.counters["icons"] = benchmark::Counter(icons.count(), benchmark::Counter::kAvgIterations);
}

BENCHMARK(openFirstList)->Unit(benchmark::kMillisecond)->UseManualTime()->Iterations(1);

}  // namespace

}  // namespace kestrelbay
