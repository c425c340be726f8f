#pragma once

namespace velmo::macos::doubles {

/// An application that needs no display. It runs for as long as the test's function does.
void addApplication();

/// The user starts the running application once more; what its delegate answers.
bool reopenApplication(bool hasVisibleWindows);

}  // namespace velmo::macos::doubles
