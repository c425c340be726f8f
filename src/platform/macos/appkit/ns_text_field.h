#pragma once

#include "ns_control.h"

namespace velmo::macos {

class NSTextField : public ClassOf<NSTextField, "NSTextField", NSControl> {
public:
    /// Can be edited.
    static NSTextField create() { return make<"initWithFrame:">(CGRect{}); }
    /// Shows a text and nothing else.
    static NSTextField label() {
        NSTextField made = create();
        made.send<void, "setBezeled:">(false);
        made.send<void, "setBordered:">(false);
        made.send<void, "setDrawsBackground:">(false);
        made.send<void, "setEditable:">(false);
        made.send<void, "setSelectable:">(false);
        return made;
    }

    void setTextColor(const NSColor& color) const { send<void, "setTextColor:">(color); }
    /// Not retained.
    void setDelegate(const Object& delegate) const { send<void, "setDelegate:">(delegate); }
};

}  // namespace velmo::macos
