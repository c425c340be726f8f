#include "platform/macos/contract/shared_numbers.h"

#include "application.h"
#include "event.h"
#include "hot_key_service.h"
#include "hotkeys/hotkey_display.h"
#include "login_service.h"
#include "macos/appkit/ns_button.h"
#include "macos/appkit/ns_event.h"
#include "macos/carbon/hot_keys.h"
#include "macos/screen_capture_kit/sc_stream_configuration.h"
#include "panel.h"
#include "popover.h"
#include "status_bar.h"
#include "tracking_area.h"
#include "window.h"
#include "window_server.h"

#include <utility>

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
            shared("CGEventType", "MouseMoved", EventType::mouseMoved)};
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
        shared("", "NSStatusWindowLevel", window_layer::status),
        shared("", "NSPopUpMenuWindowLevel", window_layer::popUpMenu),
        shared("", "kCVPixelFormatType_32BGRA", SCStreamConfiguration::bgra),
        shared("", "NSVariableStatusItemLength", StatusItem::variableLength)};
}

Numbers controlNumbers() {
    return {shared("", "NSControlStateValueOff", control_state::off),
            shared("", "NSControlStateValueOn", control_state::on),
            shared("", "NSPageUpFunctionKey", function_key::pageUp),
            shared("", "NSPageDownFunctionKey", function_key::pageDown),
            shared("", "NSHomeFunctionKey", function_key::home)};
}

Numbers serviceNumbers() {
    return {shared("", "NSUTF8StringEncoding", utf8Encoding),
            shared("NSApplicationActivationPolicy", "Regular", ActivationPolicy::regular),
            shared("NSApplicationActivationPolicy", "Accessory", ActivationPolicy::accessory),
            shared("NSApplicationActivationPolicy", "Prohibited", ActivationPolicy::prohibited),
            shared("SMAppServiceStatus", "NotRegistered", LoginServiceStatus::notRegistered),
            shared("SMAppServiceStatus", "Enabled", LoginServiceStatus::enabled),
            shared("SMAppServiceStatus", "RequiresApproval", LoginServiceStatus::requiresApproval),
            shared("SMAppServiceStatus", "NotFound", LoginServiceStatus::notFound),
            shared("", "kEventClassKeyboard", hotKeyPressed.eventClass),
            shared("", "kEventHotKeyPressed", hotKeyPressed.eventKind),
            shared("", "kEventHotKeyNoOptions", noHotKeyOptions),
            shared("", "kEventParamDirectObject", carbon::directObjectParameter),
            shared("", "typeEventHotKeyID", carbon::hotKeyIDType),
            shared("", "kVK_Escape", escapeKeyCode),
            shared("", "cmdKey", hot_key_modifier::command),
            shared("", "shiftKey", hot_key_modifier::shift),
            shared("", "optionKey", hot_key_modifier::option),
            shared("", "controlKey", hot_key_modifier::control)};
}

/// The key that the user reads so. -1: there is none.
int keyNamed(const char* name) {
    for (std::uint16_t code = 0; code < 128; ++code) {
        if (hotkeyDisplay({.keyCode = code}) == name)
            return code;
    }
    return -1;
}

Numbers keyNumbers() {
    constexpr std::pair<const char*, const char*> keys[] = {{"Return", "↩"},
                                                            {"Tab", "⇥"},
                                                            {"Space", "Space"},
                                                            {"Delete", "⌫"},
                                                            {"ANSI_KeypadEnter", "⌤"},
                                                            {"Escape", "⎋"},
                                                            {"Home", "↖"},
                                                            {"ForwardDelete", "⌦"},
                                                            {"End", "↘"},
                                                            {"PageUp", "⇞"},
                                                            {"UpArrow", "↑"},
                                                            {"PageDown", "⇟"},
                                                            {"LeftArrow", "←"},
                                                            {"RightArrow", "→"},
                                                            {"DownArrow", "↓"},
                                                            {"F1", "F1"},
                                                            {"F2", "F2"},
                                                            {"F3", "F3"},
                                                            {"F4", "F4"},
                                                            {"F5", "F5"},
                                                            {"F6", "F6"},
                                                            {"F7", "F7"},
                                                            {"F8", "F8"},
                                                            {"F9", "F9"},
                                                            {"F10", "F10"},
                                                            {"F11", "F11"},
                                                            {"F12", "F12"}};
    Numbers numbers;
    for (const auto& [key, name] : keys)
        numbers.push_back(shared("", ("kVK_" + std::string(key)).c_str(), keyNamed(name)));
    return numbers;
}

}  // namespace

std::vector<SharedNumber> sharedNumbers() {
    Numbers all;
    for (const Numbers& some :
         {eventNumbers(), windowNumbers(), controlNumbers(), serviceNumbers(), keyNumbers()})
        all.insert(all.end(), some.begin(), some.end());
    return all;
}

}  // namespace velmo::macos
