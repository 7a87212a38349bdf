#include "settings/NotificationCenter.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

#include <QByteArray>
#include <QObject>

namespace kestrelbay {

struct NotificationCenter::Observer {
    QByteArray name;
    const QObject *context;
    std::function<void()> function;
    QMetaObject::Connection contextEnds;
    bool ended = false;
};

class NotificationCenter::Observers {
public:
    using ObserverPtr = std::shared_ptr<Observer>;

    std::vector<ObserverPtr> named(QLatin1StringView name) const {
        std::vector<ObserverPtr> found;
        std::ranges::copy_if(all_, std::back_inserter(found), [name](const ObserverPtr &observer) {
            return QLatin1StringView(observer->name) == name;
        });
        return found;
    }

    void add(const ObserverPtr &observer) { all_.push_back(observer); }

    template <typename Predicate>
    void endWhere(Predicate predicate) {
        std::vector<ObserverPtr> staying;
        // What a function holds may observe too, and goes last.
        std::vector<ObserverPtr> ended;
        std::partition_copy(all_.begin(), all_.end(), std::back_inserter(staying),
                            std::back_inserter(ended),
                            [&predicate](const ObserverPtr &each) { return !predicate(*each); });
        all_ = std::move(staying);
        for (const ObserverPtr &observer : ended) {
            observer->ended = true;
            QObject::disconnect(observer->contextEnds);
        }
    }

private:
    std::vector<ObserverPtr> all_;
};

NotificationCenter::NotificationCenter() : observers_(std::make_shared<Observers>()) {}

NotificationCenter::~NotificationCenter() {
    observers_->endWhere([](const Observer &) { return true; });
}

NotificationCenter &NotificationCenter::defaultCenter() {
    static NotificationCenter center;
    return center;
}

void NotificationCenter::post(QLatin1StringView name) {
    for (const auto &observer : observers_->named(name)) {
        if (!observer->ended)
            observer->function();
    }
}

void NotificationCenter::observe(QLatin1StringView name, QObject *context,
                                 std::function<void()> function) {
    const auto observer = std::make_shared<Observer>(Observer{
        .name = QByteArray(name.data(), name.size()),
        .context = context,
        .function = std::move(function),
        .contextEnds = {},
    });
    const auto end = [observers = std::weak_ptr(observers_), context] {
        if (const auto living = observers.lock())
            living->endWhere([context](const Observer &each) { return each.context == context; });
    };
    observer->contextEnds = QObject::connect(context, &QObject::destroyed, context, end);
    observers_->add(observer);
}

void NotificationCenter::stopObserving(QLatin1StringView name, const QObject *context) {
    observers_->endWhere([name, context](const Observer &each) {
        return each.context == context && QLatin1StringView(each.name) == name;
    });
}

}  // namespace kestrelbay
