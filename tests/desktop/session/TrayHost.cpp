#include "desktop/session/TrayHost.h"

#include <stdexcept>

#include "desktop/display/Picture.h"
#include "support/Poll.h"

namespace kestrelbay::desktop {

using testing::ChildProcess;
using testing::waitUntil;

namespace {

constexpr const char *kPanelClass = "Xfce4-panel";
constexpr const char *kTrayerClass = "trayer";
constexpr const char *kTraySelection = "_NET_SYSTEM_TRAY_S0";
/// Of a panel's edge, where it draws lines and not icons.
constexpr int kEdge = 3;

constexpr const char *kPanelConfig = R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="dark-mode" type="bool" value="%1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="length" type="uint" value="100"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="size" type="uint" value="28"/>
      <property name="plugin-ids" type="array">
        <value type="int" value="1"/>
      </property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="systray">
      <property name="square-icons" type="bool" value="true"/>
    </property>
  </property>
</channel>
)";

}  // namespace

TrayHost::TrayHost(Desktop &desktop, Kind kind, Shade shade) : desktop_(desktop), kind_(kind) {
    QString program = QStringLiteral("xfce4-panel");
    QStringList arguments{QStringLiteral("--disable-wm-check")};
    if (kind_ == Kind::Notifiers) {
        configurePanel(shade);
    } else {
        program = QStringLiteral("trayer");
        arguments = {
            QStringLiteral("--edge"),
            QStringLiteral("top"),
            QStringLiteral("--align"),
            QStringLiteral("left"),
            QStringLiteral("--width"),
            QStringLiteral("10"),
            QStringLiteral("--height"),
            QStringLiteral("28"),
            QStringLiteral("--transparent"),
            QStringLiteral("true"),
            QStringLiteral("--alpha"),
            QStringLiteral("0"),
            QStringLiteral("--tint"),
            shade == Shade::Dark ? QStringLiteral("0x202020") : QStringLiteral("0xf0f0f0")};
    }
    process_ = std::make_unique<ChildProcess>(program, arguments, desktop_.environment(),
                                              QProcess::nullDevice());
    XClient &client = desktop_.view().client();
    const auto ready = [&] {
        return client.ownerOf(kTraySelection) != XCB_NONE && !area().isEmpty();
    };
    if (!waitUntil(ready))
        throw std::runtime_error("the tray did not start");
}

TrayHost::~TrayHost() {
    process_.reset();
    // The panel keeps its tray in a process of its own, which follows it.
    XClient &client = desktop_.view().client();
    (void)waitUntil([&] { return client.ownerOf(kTraySelection) == XCB_NONE; });
}

void TrayHost::configurePanel(Shade shade) const {
    const QString dark = shade == Shade::Dark ? QStringLiteral("true") : QStringLiteral("false");
    HomeFolder::write(
        desktop_.home().config(QStringLiteral("xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml")),
        QString::fromLatin1(kPanelConfig).arg(dark).toLatin1());
    // Who has read that file once does not do so again.
    ChildProcess setting(QStringLiteral("xfconf-query"),
                         {QStringLiteral("-c"), QStringLiteral("xfce4-panel"), QStringLiteral("-p"),
                          QStringLiteral("/panels/dark-mode"), QStringLiteral("-n"),
                          QStringLiteral("-t"), QStringLiteral("bool"), QStringLiteral("-s"), dark},
                         desktop_.environment());
    if (!setting.waitForExit())
        throw std::runtime_error("the panel's settings do not answer");
}

QRect TrayHost::area() {
    const auto windows = desktop_.view().windowsOf(
        QLatin1String(kind_ == Kind::Notifiers ? kPanelClass : kTrayerClass));
    return windows.empty() ? QRect() : desktop_.view().client().area(windows.front());
}

std::optional<QRect> TrayHost::icon() {
    return kind_ == Kind::Notifiers ? drawnIcon() : embeddedIcon(desktop_.view().client().root());
}

std::optional<QRect> TrayHost::drawnIcon() {
    const QRect inside = area().adjusted(kEdge, kEdge, -kEdge, -kEdge);
    if (inside.isEmpty())
        return std::nullopt;
    const QImage picture = pictureOf(desktop_.view().client(), inside);
    if (picture.isNull())
        return std::nullopt;
    // There is never an icon at its far end.
    const QColor background = picture.pixelColor(picture.width() - 1, picture.height() / 2);
    const QRect found = contentsOf(picture, background);
    return found.isEmpty() ? std::nullopt : std::optional(found.translated(inside.topLeft()));
}

std::optional<QRect> TrayHost::embeddedIcon(xcb_window_t window) {
    XClient &client = desktop_.view().client();
    for (const xcb_window_t child : client.children(window)) {
        if (!client.numbers(child, "_XEMBED_INFO").empty() && client.isMapped(child) &&
            area().contains(client.area(child)))
            return client.area(child);
        if (const auto found = embeddedIcon(child))
            return found;
    }
    return std::nullopt;
}

}  // namespace kestrelbay::desktop
