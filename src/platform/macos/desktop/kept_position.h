#pragma once

#include "macos/foundation/ns_user_defaults.h"

#include <string>

namespace velmo::macos {

/// While this lives, what the system remembers of an item's place in the menu bar is not lost: it forgets the
/// place of an item that is hidden or removed, although the same item comes back.
class KeptPosition {
public:
    /// Nothing is kept for an item without a name.
    explicit KeptPosition(const std::string& autosaveName);
    ~KeptPosition();
    KeptPosition(const KeptPosition&) = delete;
    KeptPosition& operator=(const KeptPosition&) = delete;

private:
    NSUserDefaults defaults_ = NSUserDefaults::standard();
    NSString key_;
    Object position_;
};

}  // namespace velmo::macos
