#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <vector>

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include "desktop/display/Keys.h"
#include "desktop/session/Desktop.h"
#include "desktop/session/PtyProcess.h"

namespace kestrelbay::bench {

/// A program that brings the target forward when Super and its key are pressed.
class Contender {
public:
    Contender(QString name, desktop::Key key, QString program, QStringList arguments,
              const QProcessEnvironment &environment)
        : name_(std::move(name)),
          key_(key),
          program_(std::move(program)),
          arguments_(std::move(arguments)),
          environment_(environment) {}

    [[nodiscard]] const QString &name() const { return name_; }
    [[nodiscard]] const QString &program() const { return program_; }
    [[nodiscard]] const desktop::Key &key() const { return key_; }
    [[nodiscard]] pid_t processId() const { return process_ ? process_->processId() : 0; }

    /// Milliseconds from its start to the moment its key is grabbed. Throws
    /// std::runtime_error when that never comes.
    double start(desktop::Desktop &desktop);
    /// Ends it and waits until its key is free.
    void stop(desktop::Desktop &desktop);
    /// Throws std::runtime_error when it has ended.
    void expectRunning();
    /// Waits until it has done nothing for so long, or half a minute at most.
    void settle(std::chrono::seconds quiet = std::chrono::seconds(1));

private:
    QString name_;
    desktop::Key key_;
    QString program_;
    QStringList arguments_;
    QProcessEnvironment environment_;
    std::unique_ptr<desktop::PtyProcess> process_;
};

/// KestrelBay gives back what only its start has needed three seconds after that.
inline constexpr std::chrono::seconds kBeforeRest{5};

/// The function keys, one for each contender.
inline constexpr desktop::Key kF1{122, 67, u'1'}, kF2{120, 68, u'2'}, kF3{99, 69, u'3'},
    kF4{118, 70, u'4'};

/// KestrelBay with one rule for an xterm, sxhkd with wmctrl, the limit of what decides by the
/// active window, and the limit at all. They are given their files in the desktop's home folder.
[[nodiscard]] std::vector<Contender> makeContenders(const desktop::Desktop &desktop,
                                                    const QString &kestrelbay, xcb_window_t target);

}  // namespace kestrelbay::bench
