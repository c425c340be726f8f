#include "system/system_settings.h"

namespace velmo {

void openSystemSettings(Workspace& workspace, std::string_view pane, std::string_view anchor) {
    std::string address = "x-apple.systempreferences:";
    address += pane;
    if (!anchor.empty()) {
        address += '?';
        address += anchor;
    }
    workspace.open(address);
}

}  // namespace velmo
