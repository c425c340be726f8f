#include "platform/macos/contract/shared_numbers.h"

#include "application.h"
#include "event.h"
#include "hot_key_service.h"
#include "login_service.h"
#include "macos/appkit/ns_box.h"
#include "macos/appkit/ns_button.h"
#include "macos/appkit/ns_event.h"
#include "macos/appkit/ns_image_view.h"
#include "macos/appkit/ns_toolbar.h"
#include "macos/carbon/hot_keys.h"
#include "macos/core_graphics/events.h"
#include "macos/core_graphics/images.h"
#include "macos/core_graphics/window_list.h"
#include "macos/foundation/ns_calendar_unit.h"
#include "macos/foundation/ns_process_info.h"
#include "macos/screen_capture_kit/sc_stream_configuration.h"
#include "macos/service_management/sm_app_service.h"
#include "panel.h"
#include "popover.h"
#include "status_bar.h"
#include "tracking_area.h"
#include "window.h"
#include "window_server.h"

namespace velmo::macos {
namespace {

using Numbers = std::vector<SharedNumber>;

template <typename Value>
SharedNumber shared(const char* enumeration, const char* member, Value value) {
    return {enumeration, member, static_cast<std::int64_t>(value)};
}

Numbers eventNumbers() {
    return {shared("NSEventType", "LeftMouseDown", EventType::leftMouseDown),
            shared("NSEventType", "LeftMouseUp", EventType::leftMouseUp),
            shared("NSEventType", "RightMouseDown", EventType::rightMouseDown),
            shared("NSEventType", "RightMouseUp", EventType::rightMouseUp),
            shared("NSEventType", "MouseMoved", EventType::mouseMoved),
            shared("NSEventType", "MouseEntered", EventType::mouseEntered),
            shared("NSEventType", "MouseExited", EventType::mouseExited),
            shared("NSEventType", "KeyDown", EventType::keyDown),
            shared("NSEventType", "ScrollWheel", EventType::scrollWheel),
            shared("NSEventType", "OtherMouseDown", EventType::otherMouseDown),
            shared("NSEventType", "OtherMouseUp", EventType::otherMouseUp),
            shared("NSEventMask", "LeftMouseDown", maskOf(EventType::leftMouseDown)),
            shared("NSEventMask", "LeftMouseUp", maskOf(EventType::leftMouseUp)),
            shared("NSEventMask", "RightMouseDown", maskOf(EventType::rightMouseDown)),
            shared("NSEventMask", "RightMouseUp", maskOf(EventType::rightMouseUp)),
            shared("NSEventMask", "KeyDown", maskOf(EventType::keyDown)),
            shared("NSEventMask", "ScrollWheel", maskOf(EventType::scrollWheel)),
            shared("NSEventModifierFlags", "CapsLock", modifier::capsLock),
            shared("NSEventModifierFlags", "Shift", modifier::shift),
            shared("NSEventModifierFlags", "Control", modifier::control),
            shared("NSEventModifierFlags", "Option", modifier::option),
            shared("NSEventModifierFlags", "Command", modifier::command),
            shared("NSEventModifierFlags", "NumericPad", modifier::numericPad),
            shared("NSEventModifierFlags", "Function", modifier::function),
            shared("CGEventType", "MouseMoved", EventType::mouseMoved),
            shared("CGEventType", "LeftMouseDown", CGEventType::leftMouseDown),
            shared("CGEventType", "LeftMouseUp", CGEventType::leftMouseUp),
            shared("CGEventType", "MouseMoved", CGEventType::mouseMoved),
            shared("CGMouseButton", "Left", CGMouseButton::left),
            shared("CGEventTapLocation", "HID", CGEventTapLocation::hid),
            shared("CGEventSourceStateID", "HIDSystemState", CGEventSourceStateID::hidSystemState)};
}

Numbers windowNumbers() {
    return {
        shared("NSWindowStyleMask", "Titled", window_style::titled),
        shared("NSWindowStyleMask", "Closable", window_style::closable),
        shared("NSWindowStyleMask", "Miniaturizable", window_style::miniaturizable),
        shared("NSWindowStyleMask", "Borderless", panel_style::borderless),
        shared("NSWindowStyleMask", "NonactivatingPanel", panel_style::nonactivatingPanel),
        shared("NSWindowStyleMask", "FullSizeContentView", panel_style::fullSizeContentView),
        shared("NSWindowCollectionBehavior", "CanJoinAllSpaces", collection_behavior::canJoinAllSpaces),
        shared("NSWindowCollectionBehavior", "Transient", collection_behavior::transient),
        shared("NSWindowCollectionBehavior", "FullScreenAuxiliary", collection_behavior::fullScreenAuxiliary),
        shared("NSWindowAnimationBehavior", "UtilityWindow", animation_behavior::utilityWindow),
        shared("NSToolbarDisplayMode", "IconAndLabel", NSToolbarDisplayMode::iconAndLabel),
        shared("NSWindowToolbarStyle", "Preference", NSWindowToolbarStyle::preference),
        shared("NSVisualEffectMaterial", "Menu", panel_material::menu),
        shared("NSVisualEffectBlendingMode", "Behind", blending_mode::behindWindow),
        shared("NSVisualEffectState", "Active", material_state::active),
        shared("NSPopoverBehavior", "ApplicationDefined", PopoverBehavior::applicationDefined),
        shared("NSPopoverBehavior", "Transient", PopoverBehavior::transient),
        shared("NSPopoverBehavior", "Semitransient", PopoverBehavior::semitransient),
        shared("NSRectEdge", "RectEdgeMinX", RectEdge::minX),
        shared("NSRectEdge", "RectEdgeMinY", RectEdge::minY),
        shared("NSRectEdge", "RectEdgeMaxX", RectEdge::maxX),
        shared("NSRectEdge", "RectEdgeMaxY", RectEdge::maxY),
        shared("NSTrackingAreaOptions", "MouseEnteredAndExited", tracking::mouseEnteredAndExited),
        shared("NSTrackingAreaOptions", "ActiveAlways", tracking::activeAlways),
        shared("NSTrackingAreaOptions", "InVisibleRect", tracking::inVisibleRect),
        shared("NSWindingRule", "NonZero", WindingRule::nonZero),
        shared("NSWindingRule", "EvenOdd", WindingRule::evenOdd),
        shared("CGWindowListOption", "OptionOnScreenOnly", WindowListOption::onScreenOnly),
        shared("CGWindowListOption", "OptionOnScreenOnly", CGWindowListOption::onScreenOnly),
        shared("", "NSStatusWindowLevel", window_layer::status),
        shared("", "NSPopUpMenuWindowLevel", window_layer::popUpMenu),
        shared("SCCaptureResolutionType", "Best", SCCaptureResolutionType::best),
        shared("", "kCVPixelFormatType_32BGRA", SCStreamConfiguration::bgra),
        shared("CGImageAlphaInfo", "PremultipliedFirst", CGImageAlphaInfo::premultipliedFirst),
        shared("CGBitmapInfo", "ByteOrder32Little", CGBitmapInfo::byteOrder32Little),
        shared("", "NSVariableStatusItemLength", StatusItem::variableLength)};
}

Numbers controlNumbers() {
    return {shared("NSWindowOrderingMode", "Below", NSWindowOrderingMode::below),
            shared("NSWindowOrderingMode", "Above", NSWindowOrderingMode::above),
            shared("NSBackingStoreType", "Buffered", NSBackingStoreType::buffered),
            shared("NSLineBreakMode", "WordWrapping", NSLineBreakMode::wordWrapping),
            shared("NSLineBreakMode", "TruncatingTail", NSLineBreakMode::truncatingTail),
            shared("NSControlSize", "Small", NSControlSize::small),
            shared("NSButtonType", "Radio", NSButtonType::radio),
            shared("NSButtonType", "MomentaryPushIn", NSButtonType::momentaryPushIn),
            shared("", "NSControlStateValueOff", control_state::off),
            shared("", "NSControlStateValueOn", control_state::on),
            shared("NSBezelStyle", "Push", NSBezelStyle::push),
            shared("NSCellImagePosition", "NoImage", NSCellImagePosition::noImage),
            shared("NSCellImagePosition", "ImageOnly", NSCellImagePosition::imageOnly),
            shared("NSImageScaling", "ImageScaleProportionallyDown", NSImageScaling::proportionallyDown),
            shared("NSImageScaling", "ImageScaleAxesIndependently", NSImageScaling::axesIndependently),
            shared("NSBoxType", "Primary", NSBoxType::primary),
            shared("NSBoxType", "Separator", NSBoxType::separator),
            shared("NSTitlePosition", "NoTitle", NSTitlePosition::noTitle),
            shared("", "NSPageUpFunctionKey", function_key::pageUp),
            shared("", "NSPageDownFunctionKey", function_key::pageDown),
            shared("", "NSHomeFunctionKey", function_key::home)};
}

Numbers serviceNumbers() {
    return {shared("", "NSUTF8StringEncoding", utf8Encoding),
            shared("NSApplicationActivationPolicy", "Regular", ActivationPolicy::regular),
            shared("NSApplicationActivationPolicy", "Accessory", ActivationPolicy::accessory),
            shared("NSApplicationActivationPolicy", "Prohibited", ActivationPolicy::prohibited),
            shared("NSCalendarOptions", "none", NSCalendarOptions::none),
            shared("NSActivityOptions", "UserInitiatedAllowingIdleSystemSleep",
                   NSActivityOptions::userInitiatedAllowingIdleSystemSleep),
            shared("SMAppServiceStatus", "NotRegistered", LoginServiceStatus::notRegistered),
            shared("SMAppServiceStatus", "Enabled", LoginServiceStatus::enabled),
            shared("SMAppServiceStatus", "RequiresApproval", LoginServiceStatus::requiresApproval),
            shared("SMAppServiceStatus", "NotFound", LoginServiceStatus::notFound),
            shared("", "kEventClassKeyboard", hotKeyPressed.eventClass),
            shared("", "kEventHotKeyPressed", hotKeyPressed.eventKind),
            shared("", "kEventParamDirectObject", carbon::directObjectParameter),
            shared("", "typeEventHotKeyID", carbon::hotKeyIDType),
            shared("", "cmdKey", hot_key_modifier::command),
            shared("", "shiftKey", hot_key_modifier::shift),
            shared("", "optionKey", hot_key_modifier::option),
            shared("", "controlKey", hot_key_modifier::control),
            shared("NSCalendarUnit", "CalendarUnitYear", NSCalendarUnit::year),
            shared("NSCalendarUnit", "CalendarUnitMonth", NSCalendarUnit::month),
            shared("NSCalendarUnit", "CalendarUnitDay", NSCalendarUnit::day),
            shared("NSCalendarUnit", "CalendarUnitWeekday", NSCalendarUnit::weekday),
            shared("NSCalendarUnit", "CalendarUnitWeekOfYear", NSCalendarUnit::weekOfYear)};
}

}  // namespace

std::vector<SharedNumber> sharedNumbers() {
    Numbers all;
    for (const Numbers& some : {eventNumbers(), windowNumbers(), controlNumbers(), serviceNumbers()})
        all.insert(all.end(), some.begin(), some.end());
    return all;
}

}  // namespace velmo::macos
