#pragma once

#include <QImage>
#include <QSize>
#include <QString>

namespace kestrelbay {

/// The symbols that the system draws, by names such as "bolt.fill". Main thread.
class SystemSymbols {
public:
    virtual ~SystemSymbols() = default;

    /// The symbol in some colour on nothing, as large as fits into the middle of a picture
    /// of `size` pixels. Null when the system has no symbol of that name.
    [[nodiscard]] virtual QImage image(const QString &name, QSize size) const = 0;
};

}  // namespace kestrelbay
