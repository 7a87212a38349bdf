#pragma once

#include <atomic>
#include <functional>
#include <optional>
#include <thread>

#include <QByteArray>
#include <QDBusMessage>
#include <QString>

#include "support/bus/FakeBusObject.h"

namespace kestrelbay::testing {

/// A KWin that takes scripts and carries out, instead of ours, what a test says.
class FakeKWin {
public:
    /// What comes of a question. On a thread of its own.
    using Script = std::function<QByteArray(const QByteArray &question)>;

    FakeKWin(const QString &busAddress, Script script);
    ~FakeKWin();
    FakeKWin(const FakeKWin &) = delete;
    FakeKWin &operator=(const FakeKWin &) = delete;

    [[nodiscard]] bool isScriptLoaded() const { return isLoaded_; }
    [[nodiscard]] int loadCount() const { return loads_; }
    /// As KWin does with a call that was not answered for long: the script waits for ever.
    void forgetCall();
    // As our script does:
    void tellOfWindow();
    void tellOfUse(const QString &window);

private:
    /// Whom the script's text has it call.
    struct Called {
        QString connection;
        QString path;
    };

    [[nodiscard]] static Called calledIn(const QString &scriptPath);
    [[nodiscard]] QDBusMessage callTo(const Called &called, const QString &member) const;
    [[nodiscard]] std::optional<QDBusMessage> answer(const QDBusMessage &call);
    void carryOut(const Called &called);

    const Script script_;
    const QString busAddress_;
    QDBusConnection bus_;
    Called called_;
    QString name_;
    std::atomic<bool> isLoaded_ = false;
    std::atomic<bool> isCallForgotten_ = false;
    std::atomic<int> loads_ = 0;
    std::thread thread_;
    FakeBusObject object_;
};

}  // namespace kestrelbay::testing
