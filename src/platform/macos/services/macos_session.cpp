#include "macos_session.h"

#include "macos/foundation/ns_apple_script.h"

namespace velmo::macos {

void MacosSession::requestLogOut() {
    NSAppleScript::with(NSString::from("tell application \"System Events\" to log out")).execute();
}

}  // namespace velmo::macos
