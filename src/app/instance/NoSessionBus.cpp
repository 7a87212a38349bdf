// Where programs of a session do not reach each other by a session bus.

#include "app/instance/ApplicationService.h"
#include "app/instance/RunningInstance.h"

namespace kestrelbay {

bool ApplicationService::registerOnSessionBus() {
    return false;
}

RunningInstance::Answer RunningInstance::request(const QString & /*action*/,
                                                 const QString & /*ruleId*/) {
    return Answer::NoBus;
}

RunningInstance::ImportAnswer RunningInstance::importRules(const QString & /*rules*/) {
    return ImportAnswer::Nobody;
}

std::optional<QString> RunningInstance::diagnosticReport() {
    return std::nullopt;
}

}  // namespace kestrelbay
