#include "async/sleep.h"

namespace velmo {

Sleep::~Sleep() {
    if (context_ != nullptr)
        context_->endSleep(this);
}

bool Sleep::begin(TaskContext& context, std::coroutine_handle<> waiting) {
    context_ = &context;
    if (context.isCancelled())
        return false;
    waiting_ = waiting;
    context.beginSleep(this);
    timer_ = runLoop_.schedule(duration_, lifetime_.guard([this] { wake(); }));
    return true;
}

void Sleep::interrupt() {
    timer_.end();
    runLoop_.post(lifetime_.guard([this] { wake(); }));
}

void Sleep::wake() {
    // Its coroutine ends it as soon as it goes on.
    context_->resume(waiting_);
}

}  // namespace velmo
