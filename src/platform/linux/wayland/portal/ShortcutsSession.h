#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <vector>

#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusServiceWatcher>
#include <QElapsedTimer>
#include <QLatin1StringView>
#include <QList>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QVariant>
#include <QVariantList>
#include <QVariantMap>

#include "platform/linux/bus/OwnBusConnection.h"
#include "platform/linux/wayland/portal/PortalShortcut.h"

namespace kestrelbay::portal {

/// The version of the desktop portal's global shortcuts; 0 where it has none. Starts the portal if
/// it does not run, and waits for it, but for a second at most. Needs no application object.
[[nodiscard]] uint globalShortcutsVersion();

/// The global shortcuts that the desktop portal has bound for this program, one session of them at
/// a time. Whether and how the portal asks the user is its own affair.
///
/// A session takes its list once. So another list is another session, and for the few milliseconds
/// in between nothing is bound. When the portal closes a session, or ends and is started again, the
/// list is bound anew. The portal ends a session with the connection that it belongs to, and so
/// however this program ends.
///
/// Main thread, with an application object.
class ShortcutsSession final : public QObject {
    Q_OBJECT

public:
    struct Shortcut {
        QString id;
        /// What it does, for the user.
        QString description;
        /// The keys it had best be, as the portal writes them; the user may have chosen others.
        QString preferredTrigger;

        bool operator==(const Shortcut &) const = default;
    };
    /// Each may destroy the session.
    struct Handlers {
        /// One was pressed: once a press, however long it is held.
        std::function<void(const QString &id)> pressed;
        /// The portal has answered, or told of other triggers.
        std::function<void()> triggersTold;
    };
    /// What the user presses for each shortcut that the portal has taken, in the desktop's own
    /// words; empty words for one that no keys are assigned to.
    using Triggers = std::map<QString, QString>;

    /// A session that was closed is made anew after this pause, and when that is of no use after
    /// one twice as long, up to a minute.
    static constexpr std::chrono::milliseconds kFirstPause{200};
    static constexpr std::chrono::milliseconds kLongestPause{60'000};
    /// What is left of it once the portal has been started.
    static constexpr std::chrono::milliseconds kLongestPauseAfterStart{2000};

    explicit ShortcutsSession(Handlers handlers);
    /// Closes the session.
    ~ShortcutsSession() override;

    /// Has the portal bind these and no others. What was asked for in the same turn of the event
    /// loop is one list.
    void setShortcuts(std::vector<Shortcut> shortcuts);

    /// What it has told last.
    [[nodiscard]] const Triggers &triggers() const { return triggers_; }
    /// Is that of the shortcuts that were set last? The portal's answer takes as long as the user
    /// does.
    [[nodiscard]] bool isAnswered() const { return isAnswered_; }

private Q_SLOTS:
    void takeResponse(uint code, const QVariantMap &results);
    void takeActivated(const QDBusObjectPath &session, const QString &id);
    void takeDeactivated(const QDBusObjectPath &session, const QString &id);
    void takeChanged(const QDBusMessage &message);
    void tryAgain();

private:
    using Then = std::function<void(const QDBusMessage &reply)>;

    [[nodiscard]] QString pathOf(QLatin1StringView kind, const QString &token);
    void ownerChanged(const QString &service, const QString &before, const QString &now);
    void begin();
    void introduceItself();
    void createSession();
    /// One that is answered by takeResponse().
    void request(const QString &member, QVariantList arguments, QVariantMap options = {});
    void call(const QDBusMessage &message, const Then &then);
    void forgetRequest();
    void take(const QVariant &shortcuts);
    [[nodiscard]] QList<PortalShortcut> list() const;
    [[nodiscard]] bool areAllIn(const QVariant &shortcuts) const;

    const Handlers handlers_;
    OwnBusConnection bus_;
    const QString session_;
    QDBusServiceWatcher services_;
    QTimer beginning_;
    std::chrono::milliseconds pause_ = kFirstPause;
    std::vector<Shortcut> shortcuts_;
    Triggers triggers_;
    bool isAnswered_ = false;
    /// There may be a session to be closed.
    bool isSessionAsked_ = false;
    /// The portal knows whose connection this is.
    bool isIntroduced_ = false;
    /// What has the calls that are under way; another one when they are of no interest any more.
    std::unique_ptr<QObject> attempt_ = std::make_unique<QObject>();
    /// The request that is to be answered, by its path and member; empty while there is none.
    QString requestPath_;
    QString requestMember_;
    int requestCount_ = 0;
    /// Shortcuts that are held down, as far as the portal tells, and when they were told of last.
    std::map<QString, QElapsedTimer> down_;
    QElapsedTimer sinceAnswer_;
};

}  // namespace kestrelbay::portal
