#pragma once

#include "macos/appkit/ns_application.h"
#include "platform/macos/macos_test.h"

namespace velmo::macos {

/// A test with an application of GNUstep's on a display.
class DisplayTest : public MacosTest {
protected:
    DisplayTest() {
        system.hasDisplay = true;
        NSApplication::shared();
    }
};

}  // namespace velmo::macos
