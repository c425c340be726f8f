#include "kept_position.h"

namespace velmo::macos {

KeptPosition::KeptPosition(const std::string& autosaveName) {
    if (autosaveName.empty())
        return;
    // Where the system keeps it is not documented: should it be kept elsewhere, nothing is found here.
    key_ = NSString::from("NSStatusItem Preferred Position " + autosaveName);
    position_ = defaults_.objectForKey(key_);
}

KeptPosition::~KeptPosition() {
    if (position_ && !defaults_.objectForKey(key_))
        defaults_.setObject(position_, key_);
}

}  // namespace velmo::macos
