#include "fakes/FakeDesktop.h"

#include <algorithm>
#include <utility>

#include <QFileInfo>

#include "fakes/Accessibility.h"
#include "platform/macos/cocoa/Strings.h"

namespace kestrelbay::macos {

namespace {

FakeDesktop *current = nullptr;

QString pathOf(NSURL *url) {
    return toQString([url path]);
}

}  // namespace

FakeDesktop::FakeDesktop() {
    current = this;
}

FakeDesktop::~FakeDesktop() {
    for (std::thread &thread : threads_)
        thread.join();
    current = nullptr;
}

FakeDesktop &FakeDesktop::shared() {
    return *current;
}

FakeDesktop::Process &FakeDesktop::run(const QString &bundlePath, const QString &bundleIdentifier) {
    const std::scoped_lock lock(mutex_);
    processes_.push_back(std::make_unique<Process>());
    Process &process = *processes_.back();
    process.pid = nextPid_++;
    if (!bundlePath.isEmpty())
        process.bundleURL = ObjCOwner<NSURL *>::retained(toNSURL(QUrl::fromLocalFile(bundlePath)));
    if (!bundleIdentifier.isEmpty())
        process.bundleIdentifier = ObjCOwner<NSString *>::retained(toNSString(bundleIdentifier));
    return process;
}

void FakeDesktop::addWindow(Process &process, const QString &name) {
    const std::scoped_lock lock(mutex_);
    Window window{
        .name = name,
        .element = makeElement(name, process.pid),
        .values = {{QStringLiteral("AXSubrole"), ObjCOwner<id>::retained(@"AXStandardWindow")},
                   {QStringLiteral("AXMinimized"),
                    ObjCOwner<id>::retained([NSNumber numberWithBool:NO])}},
        .errors = {}};
    process.windows.push_back(std::move(window));
}

void FakeDesktop::quit(const QString &bundlePath) {
    const std::scoped_lock lock(mutex_);
    std::erase_if(processes_, [&](const auto &process) {
        return pathOf(process->bundleURL.get()) == bundlePath;
    });
}

FakeDesktop::Process *FakeDesktop::process(pid_t pid) {
    const auto found = std::ranges::find(processes_, pid, [](const auto &p) { return p->pid; });
    return found == processes_.end() ? nullptr : found->get();
}

FakeDesktop::Process *FakeDesktop::process(NSURL *bundle) {
    const auto found = std::ranges::find_if(processes_, [&](const auto &process) {
        return pathOf(process->bundleURL.get()) == pathOf(bundle);
    });
    return found == processes_.end() ? nullptr : found->get();
}

FakeDesktop::Window *FakeDesktop::window(AXUIElementRef element) {
    for (const auto &process : processes_)
        for (Window &window : process->windows)
            if (window.element.get() == element)
                return &window;
    return nullptr;
}

bool FakeDesktop::launch(NSURL *application) {
    const QString path = pathOf(application);
    if (!QFileInfo(path).isDir())
        return false;
    const std::scoped_lock lock(mutex_);
    Process &process = run(path, QStringLiteral("test.") + QFileInfo(path).completeBaseName());
    addWindow(process, QStringLiteral("first"));
    activate(process);
    return true;
}

void FakeDesktop::activate(Process &process) {
    for (const auto &each : processes_)
        each->isActive = each.get() == &process;
    process.looksLeft.reset();
}

void FakeDesktop::callLater(std::function<void()> work) {
    const std::scoped_lock lock(mutex_);
    threads_.emplace_back(std::move(work));
}

}  // namespace kestrelbay::macos
