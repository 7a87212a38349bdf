#pragma once

#include <vector>

#include <QByteArray>
#include <QString>

namespace kestrelbay {

/// A program's arguments, and before them those that choose Qt's platform. Later ones count for
/// Qt. To be kept as long as the application object, which takes out what it understands.
class QtArguments {
public:
    /// As main() gets them. `platform` may be empty: then nothing is added.
    QtArguments(int argc, char **argv, const QString &platform);
    QtArguments(const QtArguments &) = delete;
    QtArguments &operator=(const QtArguments &) = delete;

    [[nodiscard]] int &count() { return count_; }
    [[nodiscard]] char **values() { return values_.data(); }

private:
    QByteArray option_{"-platform"};
    QByteArray platform_;
    std::vector<char *> values_;
    int count_;
};

}  // namespace kestrelbay
