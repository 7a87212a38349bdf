#include "app/instance/ApplicationService.h"

#include <QObject>

#include <utility>

namespace kestrelbay {

ApplicationService::ApplicationService(Offers offers) : offers_(std::move(offers)) {}

ApplicationService::~ApplicationService() = default;

void ApplicationService::performAction(const QString &name) const {
    if (const auto action = offers_.actions.find(name); action != offers_.actions.end())
        action->second();
}

}  // namespace kestrelbay
