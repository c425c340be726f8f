#include "simulated/simulated_application.h"

namespace velmo {

void SimulatedApplication::setDelegate(ApplicationDelegate* delegate) {
    calls_.push_back(delegate != nullptr ? Call::setDelegate : Call::unsetDelegate);
    delegate_ = delegate;
}

void SimulatedApplication::setActivationPolicy(ActivationPolicy policy) {
    calls_.push_back(Call::setActivationPolicy);
    activationPolicy_ = policy;
}

void SimulatedApplication::run() {
    calls_.push_back(Call::run);
    if (delegate_ != nullptr)
        delegate_->applicationDidFinishLaunching();
    if (whileRunning_)
        whileRunning_();
}

bool SimulatedApplication::reopen(bool hasVisibleWindows) {
    return delegate_ == nullptr || delegate_->applicationShouldHandleReopen(hasVisibleWindows);
}

void SimulatedApplication::perform(ApplicationCommand command) {
    if (delegate_ != nullptr)
        delegate_->applicationPerform(command);
}

void SimulatedApplication::handle(const Event& event, const std::function<void()>& work) {
    const auto outer = currentEvent_;
    currentEvent_ = event;
    work();
    currentEvent_ = outer;
}

}  // namespace velmo
