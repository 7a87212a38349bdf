#include "platform/linux/x11/connection/DisplayDiagnostics.h"

#include <array>
#include <string>
#include <string_view>

#include <QStringList>

#include <xcb/xinput.h>

#include "platform/linux/x11/connection/XConnection.h"

namespace kestrelbay::x11 {

namespace {

constexpr std::uint32_t kLongestName = 256;

QString server(const XConnection &connection) {
    const xcb_setup_t *const setup = xcb_get_setup(connection.get());
    const QString vendor = QString::fromLatin1(
        xcb_setup_vendor(setup), static_cast<qsizetype>(xcb_setup_vendor_length(setup)));
    return QStringLiteral("%1, release %2, screens: %3")
        .arg(vendor)
        .arg(setup->release_number)
        .arg(connection.roots().size());
}

QString windowManager(const XConnection &connection) {
    const std::optional<QString> name = windowManagerName(connection);
    if (!name)
        return QStringLiteral("none");
    return name->isEmpty() ? QStringLiteral("without a name") : *name;
}

bool isCompositing(const XConnection &connection) {
    const std::string selection = "_NET_WM_CM_S" + std::to_string(connection.defaultScreen());
    const xcb_atom_t atom = internAtoms(connection, std::array<std::string_view, 1>{selection})[0];
    return connection.ownerOf(atom) != XCB_NONE;
}

QString xinput(const XConnection &connection) {
    const xcb_query_extension_reply_t *const extension =
        xcb_get_extension_data(connection.get(), &xcb_input_id);
    if (extension == nullptr || extension->present == 0)
        return QStringLiteral("none");
    // The newest there is; the server answers with its own, if that is older.
    const Reply<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        connection.get(), xcb_input_xi_query_version(connection.get(), 2, 4), nullptr));
    return version ? QStringLiteral("%1.%2").arg(version->major_version).arg(version->minor_version)
                   : QStringLiteral("no answer");
}

QString keyboardLayout(const XConnection &connection) {
    const xcb_atom_t rules =
        internAtoms(connection, std::array<std::string_view, 1>{"_XKB_RULES_NAMES"})[0];
    const QStringList values = propertyTexts(
        connection.readProperty(connection.root(), rules, XCB_ATOM_STRING, kLongestName));
    constexpr std::array kParts{"rules", "model", "layout", "variant", "options"};
    QStringList parts;
    for (std::size_t i = 0; i < kParts.size(); ++i) {
        const QString value = values.value(static_cast<qsizetype>(i));
        if (!value.isEmpty())
            parts.append(QLatin1String(kParts[i]) + u' ' + value);
    }
    return parts.isEmpty() ? QStringLiteral("unknown") : parts.join(QStringLiteral(", "));
}

}  // namespace

std::optional<QString> windowManagerName(const XConnection &connection) {
    const std::string selection = "WM_S" + std::to_string(connection.defaultScreen());
    const auto [checkAtom, nameAtom, utf8Atom, selectionAtom] = internAtoms(
        connection, std::array<std::string_view, 4>{"_NET_SUPPORTING_WM_CHECK", "_NET_WM_NAME",
                                                    "UTF8_STRING", selection});
    const auto check = [&, atom = checkAtom](xcb_window_t window) {
        return propertyWord(connection.readProperty(window, atom, XCB_ATOM_WINDOW, 1))
            .value_or(XCB_NONE);
    };
    xcb_window_t window = check(connection.root());
    // One that has gone leaves its window's number behind. When mutter takes over from mutter,
    // the earlier one deletes the later one's, which still owns the managers' selection.
    if (window == XCB_NONE || check(window) != window)
        window = connection.ownerOf(selectionAtom);
    if (window == XCB_NONE)
        return std::nullopt;
    return propertyText(connection.readProperty(window, nameAtom, utf8Atom, kLongestName));
}

std::vector<std::pair<QString, QString>> describeDisplay(const QString &displayName) {
    const QString serverName = QStringLiteral("X server");
    if (displayName.isEmpty())
        return {{serverName, QStringLiteral("none (DISPLAY is not set)")}};
    const XConnection connection(displayName);
    if (!connection.isUsable())
        return {{serverName, QStringLiteral("%1 does not answer").arg(displayName)}};
    return {{serverName, server(connection)},
            {QStringLiteral("Window manager"), windowManager(connection)},
            {QStringLiteral("Compositing"),
             isCompositing(connection) ? QStringLiteral("yes") : QStringLiteral("no")},
            {QStringLiteral("XInput"), xinput(connection)},
            {QStringLiteral("Keyboard layout"), keyboardLayout(connection)}};
}

}  // namespace kestrelbay::x11
