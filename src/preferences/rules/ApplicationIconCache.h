#pragma once

#include <vector>

#include <QHash>
#include <QImage>
#include <QObject>
#include <QStringList>

namespace kestrelbay {

class ApplicationCatalog;
class DispatchQueue;
struct PreferencesServices;

/// The icons of the applications in the rules list, and whether these are there, read on the
/// background queue, all that are asked for in one turn together. Kept from one visit of the
/// list to the next, so that it opens with its icons. Main thread.
class ApplicationIconCache final : public QObject {
    Q_OBJECT

public:
    /// Side of an icon in device-independent pixels.
    static constexpr int kIconSide = 28;

    /// The services have to outlive the cache, and work that it has begun.
    explicit ApplicationIconCache(const PreferencesServices &services);

    /// The icon of the application at this path. Null for no path, and until the icon
    /// is read, which this call sets going.
    [[nodiscard]] QImage icon(const QString &applicationPath);

    /// Is there no application at this path? False until icon() has read it.
    [[nodiscard]] bool isMissing(const QString &applicationPath) const {
        return entries_.value(applicationPath).isMissing;
    }

    /// Has every icon read again where it is next asked for, and those of now shown
    /// until then: the theme and the applications may have changed.
    void refresh();

    /// Has none any more, for a time in which no list is shown.
    void forget();

Q_SIGNALS:
    /// What was asked for is there, or is not what it was before.
    void iconsArrived();

private:
    enum class State { Wanted, Read, Outdated };
    struct Entry {
        QImage image;
        bool isMissing = false;
        State state = State::Wanted;
    };

    void readWanted();
    void take(const QStringList &paths, const std::vector<QImage> &images,
              const std::vector<bool> &missing);

    ApplicationCatalog &catalog_;
    DispatchQueue &mainQueue_;
    DispatchQueue &backgroundQueue_;
    QHash<QString, Entry> entries_;
    QStringList wanted_;
    bool isReading_ = false;
};

}  // namespace kestrelbay
