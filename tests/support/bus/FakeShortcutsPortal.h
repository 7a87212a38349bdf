#pragma once

#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <vector>

#include <QString>
#include <QStringList>
#include <QVariantMap>

#include "support/bus/FakeBusObject.h"

namespace kestrelbay::testing {

/// The global shortcuts of a desktop's portal, for one program. Needs a QCoreApplication.
class FakeShortcutsPortal {
public:
    enum class Manner {
        Current,
        /// As Plasma 5.27: shortcuts are bound that come with CreateSession, and no others.
        BindsAtOnce,
        /// BindShortcuts asks a user who says no.
        Declines,
    };

    explicit FakeShortcutsPortal(const QString &busAddress, Manner manner = Manner::Current);

    /// Members called since the last take, in their order.
    [[nodiscard]] QStringList takeCalls();
    /// The preferred triggers of what is bound, by id.
    [[nodiscard]] std::map<QString, QString> bound();
    [[nodiscard]] QString description(const QString &id);
    [[nodiscard]] bool hasSession();

    /// Has no keys for it from the next session on.
    void leaveWithoutKeys(const QString &id);
    /// Answers no request from now on, until it answers all that came.
    void thinkAbout();
    void answerAll();

    void press(const QString &id);
    void release(const QString &id);
    /// The user has chosen other keys.
    void reassign(const QString &id, const QString &trigger);
    void closeSession();

private:
    struct Held {
        QString request{};
        uint code = 0;
        QVariantMap results{};
    };

    [[nodiscard]] std::optional<QDBusMessage> answer(const QDBusMessage &call);
    [[nodiscard]] QDBusMessage answerRequest(const QDBusMessage &call);
    void bind(const QVariant &shortcuts);
    [[nodiscard]] QVariant told() const;
    void respond(const Held &response);
    void tell(const QString &member, const QVariantList &values);

    const Manner manner_;
    /// What is below is used on the object's thread, too.
    std::mutex mutex_;
    QStringList calls_;
    /// By id: what came, and "trigger_description" as it is told.
    std::map<QString, QVariantMap> bound_;
    std::set<QString> withoutKeys_;
    QString session_;
    bool isThinking_ = false;
    std::vector<Held> held_;
    // Last: it answers as soon as it is there.
    FakeBusObject object_;
};

}  // namespace kestrelbay::testing
