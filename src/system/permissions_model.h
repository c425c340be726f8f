#pragma once

#include "platform/lifetime.h"
#include "platform/platform.h"
#include "platform/scoped_timer.h"
#include "preferences/published.h"

#include <memory>
#include <string_view>

namespace velmo {

/// Mirrors what the system permits, for the settings. Looks once a second for as long as it exists.
class PermissionsModel {
public:
    explicit PermissionsModel(const Platform& platform);
    PermissionsModel(const PermissionsModel&) = delete;
    PermissionsModel& operator=(const PermissionsModel&) = delete;

    /// Whether windows of others may be pictured, as of the last look.
    Published<bool> screenRecording;
    /// Whether clicks may be sent to others, as of the last look.
    Published<bool> accessibility;

    /// Looks now. Both values are published, whether or not they changed.
    void refresh();

    /// These ask the system and then open its settings.
    void grantScreenRecording();
    void grantAccessibility();
    /// These ask nobody.
    void openScreenRecordingSettings();
    void openAccessibilitySettings();

private:
    Platform platform_;
    ScopedTimer timer_;
    Lifetime lifetime_;
};

}  // namespace velmo
