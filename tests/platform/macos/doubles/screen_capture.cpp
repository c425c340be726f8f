#include "platform/macos/doubles/screen_capture.h"

#include "macos/core_graphics/images.h"
#include "macos/objc/autorelease_pool.h"
#include "macos/objc/block.h"
#include "platform/macos/doubles/added_method.h"
#include "platform/macos/doubles/double_system.h"
#include "platform/macos/doubles/record_class.h"

#include <chrono>
#include <cstring>
#include <thread>
#include <vector>

namespace velmo::macos {
namespace doubles {
namespace {

/// Calls a block as compiled code does, by the function in its fourth word, and on another thread.
void callOnOtherThread(void* block, const Object& result) {
    using Invoke = void (*)(void*, Id, Id);
    struct Layout {
        void* kind;
        int flags;
        int reserved;
        Invoke invoke;
    };
    static std::vector<std::jthread> threads;
    threads.emplace_back([kept = _Block_copy(block), result] {
        const AutoreleasePool pool;
        static_cast<Layout*>(kept)->invoke(kept, result.get(), nullptr);
        // Others have let go of the block by then.
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        _Block_release(kept);
    });
}

void getContent(const NSObject& /*contentClass*/, bool excludesDesktop, bool onScreenOnly, void* completion) {
    system().contentRequests.emplace_back(excludesDesktop, onScreenOnly);
    Object content;
    if (system().shareableWindows) {
        content = makeRecord("SCShareableContent");
        setMember(content, "windows", system().shareableWindows->windows);
    }
    callOnOtherThread(completion, content);
}

NSArray windows(const NSObject& content) {
    return Object::share<NSArray>(member(content, "windows").get());
}

std::uint32_t windowID(const NSObject& window) {
    return static_cast<std::uint32_t>(numberMember(window, "windowID"));
}

NSObject initWithWindow(const NSObject& filter, const NSObject& window) {
    setMember(filter, "window", numberMember(window, "windowID"));
    return filter;
}

void setWidth(const NSObject& configuration, NSUInteger width) {
    setMember(configuration, "width", static_cast<double>(width));
}
void setHeight(const NSObject& configuration, NSUInteger height) {
    setMember(configuration, "height", static_cast<double>(height));
}
void setShowsCursor(const NSObject& configuration, bool shows) {
    setMember(configuration, "cursor", shows ? 1 : 0);
}
void setCaptureResolution(const NSObject& configuration, NSInteger type) {
    setMember(configuration, "resolution", static_cast<double>(type));
}
void setPixelFormat(const NSObject& configuration, std::uint32_t format) {
    setMember(configuration, "format", format);
}

void captureImage(const NSObject& /*managerClass*/, const NSObject& filter, const NSObject& configuration,
                  void* completion) {
    const double window = numberMember(filter, "window");
    system().captures.push_back(
        {.window = static_cast<std::uint32_t>(window),
         .width = static_cast<std::int64_t>(numberMember(configuration, "width")),
         .height = static_cast<std::int64_t>(numberMember(configuration, "height")),
         .showsCursor = numberMember(configuration, "cursor") != 0,
         .resolution = static_cast<std::int64_t>(numberMember(configuration, "resolution")),
         .pixelFormat = static_cast<std::uint32_t>(numberMember(configuration, "format"))});
    Object image;
    if (system().capturesSucceed) {
        image = makeRecord("VelmoImageRecord");
        setMember(image, "width", numberMember(configuration, "width"));
        setMember(image, "height", numberMember(configuration, "height"));
        setMember(image, "colour", window);
    }
    callOnOtherThread(completion, image);
}

}  // namespace

void addScreenCapture() {
    const RawClass window = makeRecordClass("SCWindow");
    setMethod<"windowID", &windowID>(window);
    objc_registerClassPair(window);
    const RawClass content = makeRecordClass("SCShareableContent");
    setMethod<"windows", &windows>(content);
    setMethod<"getShareableContentExcludingDesktopWindows:onScreenWindowsOnly:completionHandler:",
              &getContent>(metaclassOf(content));
    objc_registerClassPair(content);
    const RawClass filter = makeRecordClass("SCContentFilter");
    setMethod<"initWithDesktopIndependentWindow:", &initWithWindow>(filter);
    objc_registerClassPair(filter);
    const RawClass configuration = makeRecordClass("SCStreamConfiguration");
    setMethod<"setWidth:", &setWidth>(configuration);
    setMethod<"setHeight:", &setHeight>(configuration);
    setMethod<"setShowsCursor:", &setShowsCursor>(configuration);
    setMethod<"setCaptureResolution:", &setCaptureResolution>(configuration);
    setMethod<"setPixelFormat:", &setPixelFormat>(configuration);
    objc_registerClassPair(configuration);
    const RawClass manager = makeRecordClass("SCScreenshotManager");
    setMethod<"captureImageWithFilter:configuration:completionHandler:", &captureImage>(metaclassOf(manager));
    objc_registerClassPair(manager);
    objc_registerClassPair(makeRecordClass("VelmoImageRecord"));
    objc_registerClassPair(makeRecordClass("VelmoContextRecord"));
}

}  // namespace doubles

namespace core_graphics {

using doubles::numberMember;

extern "C" {
std::uint64_t CGImageGetWidth(Id image) {
    return static_cast<std::uint64_t>(numberMember(Object::share(image), "width"));
}

std::uint64_t CGImageGetHeight(Id image) {
    return static_cast<std::uint64_t>(numberMember(Object::share(image), "height"));
}

Id CGColorSpaceCreateDeviceRGB() {
    return NSString::from("RGB").leave();
}

Id CGBitmapContextCreate(void* pixels, std::uint64_t width, std::uint64_t height,
                         std::uint64_t bitsPerComponent, std::uint64_t bytesPerRow, Id colorSpace,
                         CGBitmapInfo info) {
    if (bitsPerComponent != 8 || bytesPerRow != 4 * width || info != bgra || colorSpace == nullptr ||
        !doubles::system().makesContexts)
        return nullptr;
    Object context = doubles::makeRecord("VelmoContextRecord");
    doubles::setMember(context, "size", static_cast<double>(bytesPerRow * height));
    doubles::setMember(context, "pixels", static_cast<double>(reinterpret_cast<std::uintptr_t>(pixels)));
    return context.leave();
}

Id CGBitmapContextCreateImage(Id context) {
    if (context == nullptr)
        return nullptr;
    const Object image = doubles::makeRecord("VelmoImageRecord");
    const auto* pixels = reinterpret_cast<const std::uint8_t*>(
        static_cast<std::uintptr_t>(numberMember(Object::share(context), "pixels")));
    doubles::setMember(image, "colour", pixels[0]);
    return Object(image).leave();
}

void CGContextDrawImage(Id context, CGRect rect, Id image) {
    const Object target = Object::share(context);
    const Object drawn = Object::share(image);
    if (rect.size.width != numberMember(drawn, "width") || rect.size.height != numberMember(drawn, "height"))
        return;
    void* const pixels = reinterpret_cast<void*>(static_cast<std::uintptr_t>(numberMember(target, "pixels")));
    std::memset(pixels, static_cast<int>(numberMember(drawn, "colour")),
                static_cast<std::size_t>(numberMember(target, "size")));
}
}

}  // namespace core_graphics
}  // namespace velmo::macos
