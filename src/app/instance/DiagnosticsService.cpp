#include "app/instance/DiagnosticsService.h"

#include <utility>

namespace kestrelbay {

DiagnosticsService::DiagnosticsService(QObject *parent, std::function<QString()> report)
    : QDBusAbstractAdaptor(parent), report_(std::move(report)) {}

QString DiagnosticsService::Report() {
    return report_();
}

}  // namespace kestrelbay
