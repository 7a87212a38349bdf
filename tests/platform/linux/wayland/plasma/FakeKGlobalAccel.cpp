#include "platform/linux/wayland/plasma/FakeKGlobalAccel.h"

#include <QDBusArgument>
#include <QKeySequence>

#include "platform/linux/wayland/plasma/BusKeySequence.h"

namespace kestrelbay::testing {

namespace {

using plasma::BusKeySequence;

const QString kPath = QStringLiteral("/kglobalaccel");
const QString kComponentPath = QStringLiteral("/component/kestrelbay");
const QString kComponent = QStringLiteral("kestrelbay");

QString wordOf(const BusKeySequence &sequence) {
    return QKeySequence(sequence.keys.value(0)).toString();
}

}  // namespace

FakeKGlobalAccel::FakeKGlobalAccel(const QString &busAddress)
    : object_(busAddress, QStringLiteral("org.kde.kglobalaccel"), kPath,
              [this](const QDBusMessage &call) { return answer(call); }) {}

std::optional<QDBusMessage> FakeKGlobalAccel::answer(const QDBusMessage &call) {
    const std::lock_guard lock(mutex_);
    const QVariantList arguments = call.arguments();
    const QString member = call.member();
    if (member == u"setShortcutKeys") {
        ++questionCount_;
        const QString action = arguments[0].toStringList().value(1);
        auto sequences = qdbus_cast<QList<BusKeySequence>>(arguments[1].value<QDBusArgument>());
        QStringList granted;
        for (BusKeySequence &sequence : sequences) {
            const QString word = wordOf(sequence);
            if (taken_.contains(word))
                sequence.keys.fill(0);
            else
                granted.append(word);
        }
        bound_[action] = granted;
        return call.createReply(QVariant::fromValue(sequences));
    }
    if (member == u"shortcutKeys") {
        QList<BusKeySequence> sequences;
        for (const QString &word : bound_[arguments[0].toStringList().value(1)])
            sequences.append({{QKeySequence(word)[0].toCombined(), 0, 0, 0}});
        return call.createReply(QVariant::fromValue(sequences));
    }
    if (member == u"allActionsForComponent") {
        QList<QStringList> ids;
        for (const auto &[action, keys] : bound_)
            ids.append({kComponent, action, {}, {}});
        return call.createReply(QVariant::fromValue(ids));
    }
    if (member == u"unregister")
        bound_.erase(arguments[1].toString());
    if (member == u"blockGlobalShortcuts")
        isBlocked_ = arguments[0].toBool();
    return call.createReply();
}

QStringList FakeKGlobalAccel::bound() {
    const std::lock_guard lock(mutex_);
    QStringList all;
    for (const auto &[action, keys] : bound_)
        all += keys;
    all.sort();
    return all;
}

QStringList FakeKGlobalAccel::actions() {
    const std::lock_guard lock(mutex_);
    QStringList all;
    for (const auto &[action, keys] : bound_)
        all.append(action);
    return all;
}

bool FakeKGlobalAccel::isBlocked() {
    const std::lock_guard lock(mutex_);
    return isBlocked_;
}

int FakeKGlobalAccel::questionCount() {
    const std::lock_guard lock(mutex_);
    return questionCount_;
}

void FakeKGlobalAccel::setTaken(const QString &key, bool isTaken) {
    const std::lock_guard lock(mutex_);
    if (isTaken)
        taken_.insert(key);
    else
        taken_.erase(key);
}

void FakeKGlobalAccel::remember(const QString &action) {
    const std::lock_guard lock(mutex_);
    bound_[action] = {};
}

void FakeKGlobalAccel::takeAway(const QString &key) {
    QString name;
    {
        const std::lock_guard lock(mutex_);
        for (auto &[action, keys] : bound_) {
            if (keys.removeAll(key) > 0)
                name = action;
        }
    }
    object_.emitSignal(
        QStringLiteral("org.kde.KGlobalAccel"), QStringLiteral("yourShortcutsChanged"),
        {QStringList{kComponent, name, {}, {}}, QVariant::fromValue(QList<BusKeySequence>())});
}

void FakeKGlobalAccel::changeAnother() {
    object_.emitSignal(QStringLiteral("org.kde.KGlobalAccel"),
                       QStringLiteral("yourShortcutsChanged"),
                       {QStringList{QStringLiteral("kwin"), QStringLiteral("Overview"), {}, {}},
                        QVariant::fromValue(QList<BusKeySequence>())});
}

void FakeKGlobalAccel::tell(const QString &member, const QString &key) {
    QString name;
    {
        const std::lock_guard lock(mutex_);
        for (const auto &[action, keys] : bound_) {
            if (keys.contains(key))
                name = action;
        }
    }
    object_.emitSignalBelow(kComponentPath, QStringLiteral("org.kde.kglobalaccel.Component"),
                            member, {kComponent, name, qlonglong{0}});
}

void FakeKGlobalAccel::press(const QString &key) {
    tell(QStringLiteral("globalShortcutPressed"), key);
}

void FakeKGlobalAccel::release(const QString &key) {
    tell(QStringLiteral("globalShortcutReleased"), key);
}

}  // namespace kestrelbay::testing
