#pragma once

#include "platform/SystemSymbols.h"

namespace kestrelbay {

/// SF Symbols, which have the names that ours are called by.
class MacSystemSymbols final : public SystemSymbols {
public:
    [[nodiscard]] QImage image(const QString &name, QSize size) const override;
};

}  // namespace kestrelbay
