#pragma once

#include <mutex>
#include <utility>

#include <QString>
#include <QStringList>

namespace kestrelbay {

/// What was asked of a fake, one line a call, in the order of the calls. Any
/// thread.
class Journal {
public:
    void add(const QString &line) {
        const std::scoped_lock lock(mutex_);
        lines_.append(line);
    }

    [[nodiscard]] QStringList lines() const {
        const std::scoped_lock lock(mutex_);
        return lines_;
    }

    [[nodiscard]] qsizetype count(const QString &line) const { return lines().count(line); }

    /// The lines so far; the journal begins anew.
    QStringList take() {
        const std::scoped_lock lock(mutex_);
        return std::exchange(lines_, {});
    }

private:
    mutable std::mutex mutex_;
    QStringList lines_;
};

}  // namespace kestrelbay
