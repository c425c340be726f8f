#include "main_thread.h"

#include "macos/objc/autorelease_pool.h"
#include "macos/objc/instance.h"
#include "ns_object.h"

#include <memory>
#include <utility>

namespace velmo::macos {
namespace {

/// Owns itself until the work has begun.
class MainThreadCall {
public:
    explicit MainThreadCall(std::function<void()> work) : work_(std::move(work)) {}

    void post() const {
        Message<"NSObject", false, "performSelectorOnMainThread:withObject:waitUntilDone:", void, Selector,
                Object, bool>::send(instance_.object().get(), selectorNamed<"runWork:">(), Object(), false);
    }

private:
    void run(const NSObject& /*argument*/) {
        const std::unique_ptr<MainThreadCall> self(this);
        // While no events come, the application lets go of nothing.
        const AutoreleasePool pool;
        work_();
    }

    using Class =
        Subclass<MainThreadCall, "VelmoMainThreadCall", NSObject, Method<"runWork:", &MainThreadCall::run>>;

    std::function<void()> work_;
    Instance<MainThreadCall, Class, NSObject> instance_{*this};
};

}  // namespace

void runOnMainThread(std::function<void()> work) {
    auto call = std::make_unique<MainThreadCall>(std::move(work));
    call.release()->post();
}

}  // namespace velmo::macos
