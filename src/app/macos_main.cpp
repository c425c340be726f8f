#include "app/run_application.h"
#include "macos/macos_desktop.h"

int main() {
    const velmo::MacosDesktop desktop;
    velmo::runApplication(desktop.platform());
    return 0;
}
