#include "autorelease_pool.h"

namespace velmo::macos {
namespace {

class NSAutoreleasePool : public ClassOf<NSAutoreleasePool, "NSAutoreleasePool", Object> {
public:
    static NSAutoreleasePool create() { return make<"init">(); }
    void drain() const { send<void, "drain">(); }
};

}  // namespace

// A pool must not be retained, so that its reference is kept by hand; draining takes it.
AutoreleasePool::AutoreleasePool() : pool_(NSAutoreleasePool::create().leave()) {}

AutoreleasePool::~AutoreleasePool() {
    auto pool = Object::adopt<NSAutoreleasePool>(pool_);
    pool.drain();
    pool.leave();
}

}  // namespace velmo::macos
