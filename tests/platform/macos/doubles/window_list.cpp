#include "platform/macos/doubles/window_list.h"

#include "platform/macos/doubles/record_class.h"

#include <initializer_list>
#include <utility>

namespace velmo::macos::doubles {
namespace {

NSMutableDictionary dictionary(std::initializer_list<std::pair<const char*, Object>> members) {
    NSMutableDictionary made = NSMutableDictionary::create();
    for (const auto& [key, value] : members)
        made.setObject(value, NSString::from(key));
    return made;
}

NSMutableDictionary window(NSInteger layer, const Rect& bounds) {
    return dictionary({{"kCGWindowLayer", NSNumber::with(layer)},
                       {"kCGWindowOwnerPID", NSNumber::with(NSInteger{1})},
                       {"kCGWindowBounds", dictionary({{"X", NSNumber::with(bounds.x)},
                                                       {"Y", NSNumber::with(bounds.y)},
                                                       {"Width", NSNumber::with(bounds.width)},
                                                       {"Height", NSNumber::with(bounds.height)}})}});
}

}  // namespace

Object itemWindow(std::uint32_t number, const std::string& owner, const Rect& bounds) {
    const NSMutableDictionary made = window(25, bounds);
    made.setObject(NSNumber::with(NSInteger{number}), NSString::from("kCGWindowNumber"));
    made.setObject(NSString::from(owner), NSString::from("kCGWindowOwnerName"));
    return made;
}

Object menuWindow() {
    return window(101, {0, 24, 200, 300});
}

Object shareableWindow(std::uint32_t number) {
    Object made = makeRecord("SCWindow");
    setMember(made, "windowID", number);
    return made;
}

}  // namespace velmo::macos::doubles
