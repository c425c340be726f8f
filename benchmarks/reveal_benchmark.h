#pragma once

namespace velmo::desktop {

/// How long it takes from the release of the button on the toggle until the last icon is at its place, beside
/// a program that does nothing but move as many windows, and beside xfce4-panel's arrow for hidden icons.
/// False where a promise is not kept.
bool compareReveals();

}  // namespace velmo::desktop
