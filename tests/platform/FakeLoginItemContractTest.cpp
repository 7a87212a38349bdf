#include "fakes/FakeLoginItem.h"
#include "platform/LoginItemContract.h"

namespace kestrelbay::testing {
namespace {

class FakeLogin {
public:
    LoginItem &item() { return item_; }
    void setRefusing(bool refusing) {
        item_.setProblem(refusing ? std::optional(QStringLiteral("refused")) : std::nullopt);
    }

private:
    FakeLoginItem item_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Fake, LoginItemContract, FakeLogin);

}  // namespace
}  // namespace kestrelbay::testing
