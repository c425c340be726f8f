#pragma once

#include "lifetime.h"
#include "run_loop.h"
#include "screen_capture.h"

#include <cstddef>
#include <map>
#include <set>

namespace velmo {

/// Access is granted at first. Every window can be pictured unless told otherwise.
class SimulatedScreenCapture : public ScreenCapture {
public:
    struct Request {
        std::uint32_t windowNumber = 0;
        CaptureConfiguration configuration;
        Seconds time = 0;
    };

    explicit SimulatedScreenCapture(RunLoop& runLoop) : runLoop_(runLoop) {}

    bool preflightAccess() const override { return granted_; }
    bool requestAccess() override {
        ++requestCount_;
        granted_ = granted_ || consents_;
        return granted_;
    }
    void getShareableWindows(bool onScreenWindowsOnly,
                             std::function<void(std::optional<WindowNumbers>)> completion) override;
    void captureWindow(std::uint32_t windowNumber, const CaptureConfiguration& configuration,
                       std::function<void(std::optional<Bitmap>)> completion) override;

    void setGranted(bool granted) { granted_ = granted; }
    /// Whether the user grants access when asked for it.
    void setConsents(bool consents) { consents_ = consents; }
    std::size_t requestCount() const { return requestCount_; }

    /// Absent makes the next queries fail.
    void setShareableWindows(std::optional<WindowNumbers> windows) { windows_ = std::move(windows); }
    /// Pictures of this window fail from now on.
    void setFails(std::uint32_t windowNumber) { failing_.insert(windowNumber); }
    /// How long a query or a picture takes.
    void setQueryDuration(Seconds duration) { queryDuration_ = duration; }
    void setDuration(std::uint32_t windowNumber, Seconds duration) { durations_[windowNumber] = duration; }
    /// What was asked for, in order.
    const std::vector<Request>& requests() const { return requests_; }
    const std::vector<bool>& queries() const { return queries_; }

private:
    RunLoop& runLoop_;
    bool granted_ = true;
    bool consents_ = false;
    std::size_t requestCount_ = 0;
    std::optional<WindowNumbers> windows_ = WindowNumbers{};
    std::set<std::uint32_t> failing_;
    Seconds queryDuration_ = 0;
    std::map<std::uint32_t, Seconds> durations_;
    std::vector<Request> requests_;
    std::vector<bool> queries_;
};

}  // namespace velmo
