#include "desktop/session/ScreenReader.h"

#include <map>
#include <stdexcept>

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusVariant>

namespace kestrelbay::desktop {

namespace {

const QString kAccessible = QStringLiteral("org.a11y.atspi.Accessible");
const QString kPropertyAccess = QStringLiteral("org.freedesktop.DBus.Properties");
const ScreenReader::Place kStatus{QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus")};
const ScreenReader::Place kPrograms{QStringLiteral("org.a11y.atspi.Registry"),
                                    QStringLiteral("/org/a11y/atspi/accessible/root")};
const ScreenReader::Place kBusItself{QStringLiteral("org.freedesktop.DBus"),
                                     QStringLiteral("/org/freedesktop/DBus")};
constexpr int kLongestAnswer = 10000;  // milliseconds
/// A relation of AT-SPI.
constexpr std::uint32_t kLabelledBy = 2;
/// Of GetExtents: the whole screen's corner counts.
constexpr std::uint32_t kOnScreen = 0;

QString roleInWords(std::uint32_t role) {
    // Those of AT-SPI that a window of ours may have.
    static const std::map<std::uint32_t, QString> kRoles{
        {2, QStringLiteral("alert")},       {7, QStringLiteral("check box")},
        {11, QStringLiteral("combo box")},  {16, QStringLiteral("dialog")},
        {20, QStringLiteral("filler")},     {23, QStringLiteral("frame")},
        {26, QStringLiteral("icon")},       {27, QStringLiteral("image")},
        {29, QStringLiteral("label")},      {31, QStringLiteral("list")},
        {32, QStringLiteral("list item")},  {37, QStringLiteral("page tab")},
        {38, QStringLiteral("tab list")},   {39, QStringLiteral("panel")},
        {43, QStringLiteral("button")},     {44, QStringLiteral("radio button")},
        {48, QStringLiteral("scroll bar")}, {61, QStringLiteral("text")},
        {65, QStringLiteral("tree")},       {69, QStringLiteral("window")},
        {88, QStringLiteral("link")},       {99, QStringLiteral("group")},
    };
    const auto found = kRoles.find(role);
    return found == kRoles.end() ? QStringLiteral("role %1").arg(role) : found->second;
}

/// Of a value of the type (so).
ScreenReader::Place placeIn(const QDBusArgument &argument) {
    ScreenReader::Place place;
    QDBusObjectPath path;
    argument.beginStructure();
    argument >> place.service >> path;
    argument.endStructure();
    place.path = path.path();
    return place;
}

std::vector<ScreenReader::Place> placesIn(const QDBusArgument &argument) {
    std::vector<ScreenReader::Place> places;
    argument.beginArray();
    while (!argument.atEnd())
        places.push_back(placeIn(argument));
    argument.endArray();
    return places;
}

QDBusMessage callOn(const ScreenReader::Place &place, const QString &interface,
                    const QString &member, const QVariantList &arguments) {
    QDBusMessage call =
        QDBusMessage::createMethodCall(place.service, place.path, interface, member);
    call.setArguments(arguments);
    return call;
}

QDBusConnection accessibilityBus(const QDBusConnection &session) {
    const QDBusMessage answer =
        session.call(callOn(kStatus, kStatus.service, QStringLiteral("GetAddress"), {}),
                     QDBus::Block, kLongestAnswer);
    if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty())
        throw std::runtime_error("no bus for screen readers: " +
                                 answer.errorMessage().toStdString());
    return QDBusConnection::connectToBus(answer.arguments().constFirst().toString(),
                                         QStringLiteral("kestrelbay-screen-reader"));
}

}  // namespace

QString ScreenReader::Thing::told() const {
    QStringList remarks;
    if (is(State::Checked))
        remarks += QStringLiteral("checked");
    if (is(State::Selected))
        remarks += QStringLiteral("selected");
    if (!is(State::Enabled))
        remarks += QStringLiteral("disabled");
    if (is(State::Focused))
        remarks += QStringLiteral("focused");
    else if (is(State::Focusable))
        remarks += QStringLiteral("focusable");
    if (!label.isEmpty() && label != name)
        remarks += QStringLiteral("of ") + label;
    QString text = roleInWords(role) + QStringLiteral(": ") + name;
    if (!description.isEmpty())
        text += QStringLiteral(" “%1”").arg(description);
    return remarks.isEmpty()
               ? text
               : text + QStringLiteral(" (%1)").arg(remarks.join(QStringLiteral(", ")));
}

QStringList ScreenReader::Thing::allTold() const {
    QStringList lines;
    for (const Thing *thing : all()) {
        if (!thing->name.isEmpty() || thing->is(State::Focusable))
            lines += thing->told();
    }
    return lines;
}

std::vector<const ScreenReader::Thing *> ScreenReader::Thing::all() const {
    std::vector<const Thing *> things{this};
    for (const Thing &child : children) {
        const auto below = child.all();
        things.insert(things.end(), below.begin(), below.end());
    }
    return things;
}

const ScreenReader::Thing *ScreenReader::Thing::focused() const {
    const Thing *found = nullptr;
    // A list that has the focus says so, and so does its row: the innermost counts.
    for (const Thing *thing : all()) {
        if (thing->is(State::Focused))
            found = thing;
    }
    return found;
}

ScreenReader::ScreenReader(const QString &sessionBusAddress)
    : session_(QDBusConnection::connectToBus(sessionBusAddress,
                                             QStringLiteral("kestrelbay-screen-reader-session"))),
      bus_(accessibilityBus(session_)) {
    if (!bus_.isConnected())
        throw std::runtime_error("the bus for screen readers does not answer");
    // Programs ask for these when they start.
    const QVariant yes = QVariant::fromValue(QDBusVariant(true));
    for (const QString &property :
         {QStringLiteral("IsEnabled"), QStringLiteral("ScreenReaderEnabled")})
        (void)session_.call(callOn(kStatus, kPropertyAccess, QStringLiteral("Set"),
                                   {QStringLiteral("org.a11y.Status"), property, yes}),
                            QDBus::Block, kLongestAnswer);
}

ScreenReader::~ScreenReader() {
    QDBusConnection::disconnectFromBus(bus_.name());
    QDBusConnection::disconnectFromBus(session_.name());
}

std::vector<ScreenReader::Thing> ScreenReader::windowsOf(pid_t process) const {
    std::vector<Thing> windows;
    for (const Place &program : children(kPrograms)) {
        const QVariantList owner =
            ask(kBusItself, kBusItself.service, QStringLiteral("GetConnectionUnixProcessID"),
                {program.service});
        if (owner.isEmpty() || owner.constFirst().toLongLong() != process)
            continue;
        for (const Place &window : children(program)) {
            if (auto thing = shown(window))
                windows.push_back(std::move(*thing));
        }
    }
    return windows;
}

QRect ScreenReader::area(const Place &place) const {
    const QVariantList answer = ask(place, QStringLiteral("org.a11y.atspi.Component"),
                                    QStringLiteral("GetExtents"), {kOnScreen});
    if (answer.isEmpty())
        return {};
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    const auto argument = answer.constFirst().value<QDBusArgument>();
    argument.beginStructure();
    argument >> x >> y >> width >> height;
    argument.endStructure();
    return {x, y, width, height};
}

QVariantList ScreenReader::ask(const Place &place, const QString &interface, const QString &member,
                               const QVariantList &arguments) const {
    const QDBusMessage answer =
        bus_.call(callOn(place, interface, member, arguments), QDBus::Block, kLongestAnswer);
    return answer.type() == QDBusMessage::ReplyMessage ? answer.arguments() : QVariantList();
}

QString ScreenReader::text(const Place &place, const QString &property) const {
    const QVariantList answer =
        ask(place, kPropertyAccess, QStringLiteral("Get"), {kAccessible, property});
    return answer.isEmpty() ? QString()
                            : answer.constFirst().value<QDBusVariant>().variant().toString();
}

std::vector<ScreenReader::Place> ScreenReader::children(const Place &place) const {
    const QVariantList answer = ask(place, kAccessible, QStringLiteral("GetChildren"));
    return answer.isEmpty() ? std::vector<Place>()
                            : placesIn(answer.constFirst().value<QDBusArgument>());
}

std::uint64_t ScreenReader::states(const Place &place) const {
    const QVariantList answer = ask(place, kAccessible, QStringLiteral("GetState"));
    const auto words =
        answer.isEmpty() ? QList<quint32>() : qdbus_cast<QList<quint32>>(answer.constFirst());
    return words.size() == 2 ? words[0] | std::uint64_t{words[1]} << 32U : 0;
}

QString ScreenReader::label(const Place &place) const {
    const QVariantList answer = ask(place, kAccessible, QStringLiteral("GetRelationSet"));
    if (answer.isEmpty())
        return {};
    QString label;
    const auto relations = answer.constFirst().value<QDBusArgument>();
    relations.beginArray();
    while (!relations.atEnd()) {
        std::uint32_t kind = 0;
        relations.beginStructure();
        relations >> kind;
        const auto targets = placesIn(relations);
        relations.endStructure();
        if (kind == kLabelledBy && !targets.empty())
            label = text(targets.front(), QStringLiteral("Name"));
    }
    relations.endArray();
    return label;
}

std::optional<ScreenReader::Thing> ScreenReader::shown(const Place &place) const {
    Thing thing{.place = place, .states = states(place)};
    if (!thing.is(State::Showing))
        return std::nullopt;
    const QVariantList role = ask(place, kAccessible, QStringLiteral("GetRole"));
    thing.role = role.isEmpty() ? 0 : role.constFirst().toUInt();
    thing.name = text(place, QStringLiteral("Name"));
    thing.description = text(place, QStringLiteral("Description"));
    thing.label = label(place);
    for (const Place &child : children(place)) {
        if (auto below = shown(child))
            thing.children.push_back(std::move(*below));
    }
    return thing;
}

}  // namespace kestrelbay::desktop
