#import "fakes/FakeObject.h"

#include <atomic>

#include "fakes/LiveObjects.h"

namespace {

std::atomic<int> objects = 0;

}  // namespace

int kestrelbay::macos::liveObjects() {
    return objects;
}

void kestrelbay::macos::objectWasMade() {
    ++objects;
}

void kestrelbay::macos::objectIsGone() {
    --objects;
}

@implementation FakeObject

- (instancetype)init {
    self = [super init];
    if (self)
        ++objects;
    return self;
}

- (void)dealloc {
    --objects;
    [super dealloc];
}

@end
