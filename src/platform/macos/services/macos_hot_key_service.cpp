#include "macos_hot_key_service.h"

#include "macos/carbon/hot_keys.h"
#include "macos/objc/autorelease_pool.h"

#include <utility>

namespace velmo::macos {
namespace {

class MacosHotKey : public HotKey {
public:
    explicit MacosHotKey(void* reference) : reference_(reference) {}
    ~MacosHotKey() override { carbon::unregisterEventHotKey(reference_); }
    MacosHotKey(const MacosHotKey&) = delete;
    MacosHotKey& operator=(const MacosHotKey&) = delete;

private:
    void* reference_;
};

class InstalledHandler : public HotKeyEventHandler {
public:
    InstalledHandler(const HotKeyEventType& type, HotKeyService::Handler handler)
        : handler_(std::move(handler)) {
        const EventTypeSpec types[] = {{type.eventClass, type.eventKind}};
        carbon::installEventHandler(carbon::applicationEventTarget(), &received, std::uint64_t{1}, &types[0],
                                    static_cast<void*>(this), &reference_);
    }
    ~InstalledHandler() override {
        if (reference_ != nullptr)
            carbon::removeEventHandler(reference_);
    }
    InstalledHandler(const InstalledHandler&) = delete;
    InstalledHandler& operator=(const InstalledHandler&) = delete;

    bool isInstalled() const { return reference_ != nullptr; }

private:
    static carbon::Status received(void* /*callRef*/, void* event, void* userData) {
        if (userData == nullptr)
            return 0;
        // While no events of its own come, the application lets go of nothing.
        const AutoreleasePool pool;
        // A copy, because the handler may remove itself.
        const auto handler = static_cast<InstalledHandler*>(userData)->handler_;
        if (event == nullptr)
            return handler(nullptr);
        EventHotKeyID id;
        const carbon::Status status = carbon::getEventParameter(
            event, carbon::directObjectParameter, carbon::hotKeyIDType, static_cast<std::uint32_t*>(nullptr),
            std::uint64_t{sizeof(id)}, static_cast<std::uint64_t*>(nullptr), static_cast<void*>(&id));
        HotKeyEvent told;
        if (status == 0)
            told.directObject = HotKeyID{id.signature, id.id};
        return handler(&told);
    }

    HotKeyService::Handler handler_;
    void* reference_ = nullptr;
};

}  // namespace

std::unique_ptr<HotKeyEventHandler> MacosHotKeyService::installEventHandler(const HotKeyEventType& type,
                                                                            Handler handler) {
    auto installed = std::make_unique<InstalledHandler>(type, std::move(handler));
    if (!installed->isInstalled())
        return nullptr;
    return installed;
}

HotKeyService::Registration MacosHotKeyService::registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                               const HotKeyID& id, std::uint32_t options) {
    void* reference = nullptr;
    Registration registration;
    registration.status = carbon::registerEventHotKey(keyCode, modifiers, EventHotKeyID{id.signature, id.id},
                                                      carbon::applicationEventTarget(), options, &reference);
    if (reference != nullptr)
        registration.hotKey = std::make_unique<MacosHotKey>(reference);
    return registration;
}

}  // namespace velmo::macos
