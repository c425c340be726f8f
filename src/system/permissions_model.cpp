#include "system/permissions_model.h"

#include "platform/accessibility.h"
#include "platform/screen_capture.h"
#include "system/system_settings.h"

namespace velmo {

namespace {

constexpr Seconds pollInterval = 1.0;
constexpr std::string_view privacyPane = "com.apple.preference.security";

}  // namespace

PermissionsModel::PermissionsModel(const Platform& platform)
    : screenRecording(platform.screenCapture.preflightAccess()),
      accessibility(platform.accessibility.isProcessTrusted()),
      platform_(platform) {
    timer_ = platform_.runLoop.scheduleRepeating(pollInterval, 0, lifetime_.guard([this] { refresh(); }));
}

void PermissionsModel::refresh() {
    screenRecording.set(platform_.screenCapture.preflightAccess());
    accessibility.set(platform_.accessibility.isProcessTrusted());
}

void PermissionsModel::grantScreenRecording() {
    platform_.screenCapture.requestAccess();
    openScreenRecordingSettings();
}

void PermissionsModel::grantAccessibility() {
    platform_.accessibility.isProcessTrusted(true);
    openAccessibilitySettings();
}

void PermissionsModel::openScreenRecordingSettings() {
    openSystemSettings(platform_.workspace, privacyPane, "Privacy_ScreenCapture");
}

void PermissionsModel::openAccessibilitySettings() {
    openSystemSettings(platform_.workspace, privacyPane, "Privacy_Accessibility");
}

}  // namespace velmo
