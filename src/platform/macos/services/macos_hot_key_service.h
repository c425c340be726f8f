#pragma once

#include "hot_key_service.h"

namespace velmo::macos {

/// The system's hot keys, of which the application's event target hears.
class MacosHotKeyService : public HotKeyService {
public:
    std::unique_ptr<HotKeyEventHandler> installEventHandler(const HotKeyEventType& type,
                                                            Handler handler) override;
    Registration registerHotKey(std::uint32_t keyCode, std::uint32_t modifiers, const HotKeyID& id,
                                std::uint32_t options) override;
};

}  // namespace velmo::macos
