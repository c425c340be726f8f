#include "kept_position.h"

#include "macos/foundation/ns_user_defaults.h"

namespace velmo::macos {
namespace {

/// Where the system keeps it is not documented: should it be kept elsewhere, nothing is found there.
NSString systemKey(const std::string& autosaveName) {
    return NSString::from("NSStatusItem Preferred Position " + autosaveName);
}

/// In the defaults, too: the program may end before the item comes back.
NSString ownKey(const std::string& autosaveName) {
    return NSString::from("keptPosition " + autosaveName);
}

void copy(const NSString& from, const NSString& to) {
    const NSUserDefaults defaults = NSUserDefaults::standard();
    if (const Object position = defaults.objectForKey(from))
        defaults.setObject(position, to);
}

}  // namespace

void keepPosition(const std::string& autosaveName) {
    if (!autosaveName.empty())
        copy(systemKey(autosaveName), ownKey(autosaveName));
}

void restorePosition(const std::string& autosaveName) {
    const bool isKnown =
        autosaveName.empty() || NSUserDefaults::standard().objectForKey(systemKey(autosaveName));
    if (!isKnown)
        copy(ownKey(autosaveName), systemKey(autosaveName));
}

}  // namespace velmo::macos
