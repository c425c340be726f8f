#include "macos/core_foundation/preferences.h"
#include "platform/macos/doubles/double_system.h"

namespace velmo::macos {
namespace {

std::string textOf(Id text) {
    return Object::share<NSString>(text).text();
}

}  // namespace

namespace core_foundation {

extern "C" {
const Id kCFPreferencesAnyApplication = NSString::from("any application").leave();
const Id kCFPreferencesCurrentUser = NSString::from("current user").leave();
const Id kCFPreferencesCurrentHost = NSString::from("current host").leave();

Id CFPreferencesCopyValue(Id key, Id application, Id user, Id host) {
    const auto& stored = doubles::system().preferences;
    const auto found = stored.find({textOf(application), textOf(user), textOf(host), textOf(key)});
    return found == stored.end() ? nullptr : Object(found->second).leave();
}

void CFPreferencesSetValue(Id key, Id value, Id application, Id user, Id host) {
    auto& stored = doubles::system().preferences;
    const std::tuple place(textOf(application), textOf(user), textOf(host), textOf(key));
    if (value == nullptr)
        stored.erase(place);
    else
        stored[place] = Object::share(value);
}

unsigned char CFPreferencesSynchronize(Id application, Id user, Id host) {
    doubles::system().synchronizedScopes.push_back(textOf(application) + ", " + textOf(user) + ", " +
                                                   textOf(host));
    return 1;
}
}

}  // namespace core_foundation
}  // namespace velmo::macos
