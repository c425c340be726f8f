#pragma once

namespace velmo::desktop {

/// Prints how long the panel of hidden items takes from a press to its being on the screen: with known
/// pictures of the icons, for the first time after the start of the program and later.
/// False where a promise is not kept.
bool comparePanels();

}  // namespace velmo::desktop
