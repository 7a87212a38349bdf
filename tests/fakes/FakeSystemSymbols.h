#pragma once

#include "fakes/Journal.h"
#include "platform/SystemSymbols.h"

namespace kestrelbay {

/// Knows the symbols it was told of; they are filled squares.
class FakeSystemSymbols final : public SystemSymbols {
public:
    [[nodiscard]] QImage image(const QString &name, QSize size) const override {
        journal_.add(QStringLiteral("%1 %2x%3").arg(name).arg(size.width()).arg(size.height()));
        if (!names_.contains(name))
            return {};
        QImage square(size, QImage::Format_ARGB32_Premultiplied);
        square.fill(Qt::black);
        return square;
    }

    // For the test:
    void setNames(const QStringList &names) { names_ = names; }
    /// What was asked for since the last take.
    QStringList takeRequests() { return journal_.take(); }

private:
    mutable Journal journal_;
    QStringList names_;
};

}  // namespace kestrelbay
