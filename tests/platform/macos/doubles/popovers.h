#pragma once

namespace velmo::macos::doubles {

/// Gives popovers what GNUstep lacks: they neither say that they are shown nor close.
void addPopovers();

}  // namespace velmo::macos::doubles
