#include "platform/linux/applications/matching/WindowSubrole.h"

#include "platform/WindowElement.h"

namespace kestrelbay {

QString subroleOf(WindowType type) {
    switch (type) {
        case WindowType::Normal:
            return kStandardWindowSubrole;
        case WindowType::Dialog:
            return QStringLiteral("AXDialog");
        case WindowType::Utility:
            return QStringLiteral("AXFloatingWindow");
        case WindowType::Decoration:
            break;
    }
    return QStringLiteral("AXUnknown");
}

}  // namespace kestrelbay
