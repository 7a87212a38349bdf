#include "platform/linux/desktop/LinuxStatusArea.h"

#include <utility>

#include <QStringList>

namespace kestrelbay {

namespace {

constexpr BusWatch::Service kWatcher{.name = "org.kde.StatusNotifierWatcher",
                                     .path = "/StatusNotifierWatcher",
                                     .interface = "org.kde.StatusNotifierWatcher"};

constexpr std::chrono::milliseconds kLongestWatcherWait{100};

bool isTrue(GVariant *reply) {
    if (!reply || !g_variant_is_of_type(reply, G_VARIANT_TYPE("(v)")))
        return false;
    const GVariantPtr wrapped(g_variant_get_child_value(reply, 0));
    const GVariantPtr value(g_variant_get_variant(wrapped.get()));
    return g_variant_is_of_type(value.get(), G_VARIANT_TYPE_BOOLEAN) &&
           g_variant_get_boolean(value.get());
}

}  // namespace

LinuxStatusArea::LinuxStatusArea(BusListener &listener, const SystemSettings &systemSettings,
                                 Settings settings)
    : systemSettings_(systemSettings),
      settings_(std::move(settings)),
      embedTray_(settings_.displayName, [this] {
          settle();
          if (darkHandler_)
              darkHandler_();
      }) {
    watcher_ = std::make_unique<BusWatch>(
        listener, inbox_, kWatcher,
        BusWatch::Handlers{.appeared = [this] { askForHost(); },
                           .vanished = [this] { setHost(false); },
                           .signal = [this](const QString &, GVariant *) { askForHost(); }});
    grace_.setSingleShot(true);
    QObject::connect(&grace_, &QTimer::timeout, &grace_, [this] { settle(); });
    grace_.start(settings_.graceForNotifiers);
}

LinuxStatusArea::~LinuxStatusArea() {
    inbox_->close();
}

void LinuxStatusArea::whenAvailable(std::function<void()> handler) {
    availableHandler_ = std::move(handler);
    // Whoever asks is not called back before this call is over.
    inbox_->post([this] { settle(); });
}

void LinuxStatusArea::askForHost() {
    watcher_->call("org.freedesktop.DBus.Properties", "Get",
                   g_variant_new("(ss)", kWatcher.interface, "IsStatusNotifierHostRegistered"),
                   [this](GVariant *reply) { setHost(isTrue(reply)); });
}

void LinuxStatusArea::setHost(bool present) {
    hasAnswer_ = true;
    hasHost_ = present;
    settle();
}

void LinuxStatusArea::waitForAnswer() {
    inbox_->waitUntil([this] { return hasAnswer_; }, kLongestWatcherWait);
}

void LinuxStatusArea::settle() {
    if (!availableHandler_)
        return;
    const bool canEmbed = embedTray_.isPresent() && !grace_.isActive();
    if (!hasHost_ && !canEmbed)
        return;
    settledForHost_ = hasHost_;
    std::exchange(availableHandler_, nullptr)();
}

bool LinuxStatusArea::isKde() const {
    return settings_.desktop.split(u':').contains(QLatin1String("KDE"), Qt::CaseInsensitive);
}

bool LinuxStatusArea::isEmbedding() const {
    return embedTray_.isPresent() && !settledForHost_.value_or(hasHost_);
}

std::optional<bool> LinuxStatusArea::isDark() const {
    if (isEmbedding() && embedTray_.isDark())
        return embedTray_.isDark();
    if (isKde())
        return systemSettings_.colorScheme() == ColorScheme::Dark;
    return true;
}

void LinuxStatusArea::setDarkHandler(std::function<void()> handler) {
    darkHandler_ = std::move(handler);
}

void LinuxStatusArea::colorSchemeChanged() {
    if (isKde() && darkHandler_)
        darkHandler_();
}

QString LinuxStatusArea::description() const {
    if (isEmbedding())
        return QStringLiteral("XEmbed tray");
    return hasHost_ ? QStringLiteral("StatusNotifier host") : QStringLiteral("none");
}

}  // namespace kestrelbay
