#include "system/login_item_manager.h"

namespace velmo {

LoginItemManager::LoginItemManager(LoginService& service) : service_(service) {
    refresh();
}

void LoginItemManager::setEnabled(bool wanted) {
    errorMessage.set(wanted ? service_.registerService() : service_.unregisterService());
    refresh();
}

void LoginItemManager::refresh() {
    isEnabled.set(service_.status() == LoginServiceStatus::enabled);
}

}  // namespace velmo
