#pragma once

#include "application.h"

#include <functional>
#include <utility>
#include <vector>

namespace velmo {

class SimulatedApplication : public Application {
public:
    enum class Call { setDelegate, unsetDelegate, setActivationPolicy, run, activate, terminate };

    void setDelegate(ApplicationDelegate* delegate) override;
    void setActivationPolicy(ActivationPolicy policy) override;
    /// Returns when launching has finished and `setWhileRunning` has done its work: the events come from
    /// whoever drives the simulation.
    void run() override;
    void activateIgnoringOtherApps(bool ignoring) override {
        if (!ignoring)
            return;
        calls_.push_back(Call::activate);
        if (activationObserver_)
            activationObserver_();
    }
    void terminate() override { calls_.push_back(Call::terminate); }
    std::optional<Event> currentEvent() const override { return currentEvent_; }

    ApplicationDelegate* delegate() const { return delegate_; }
    std::optional<ActivationPolicy> activationPolicy() const { return activationPolicy_; }
    /// What the program asked of its application, in order.
    const std::vector<Call>& calls() const { return calls_; }
    void setWhileRunning(std::function<void()> user) { whileRunning_ = std::move(user); }
    /// The user starts the running application once more. The delegate's answer, or true without one.
    bool reopen(bool hasVisibleWindows);
    /// The user asks for it from outside of the application.
    void perform(ApplicationCommand command);
    /// Called while the program activates itself.
    void setActivationObserver(std::function<void()> observer) { activationObserver_ = std::move(observer); }
    /// Runs the work with the event as the current one.
    void handle(const Event& event, const std::function<void()>& work);

private:
    ApplicationDelegate* delegate_ = nullptr;
    std::optional<ActivationPolicy> activationPolicy_;
    std::optional<Event> currentEvent_;
    std::vector<Call> calls_;
    std::function<void()> activationObserver_;
    std::function<void()> whileRunning_;
};

}  // namespace velmo
