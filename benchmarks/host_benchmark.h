#pragma once

namespace velmo::desktop {

/// Velmo beside its peers: from the start to the first icon in its place, the memory with ten icons, and how
/// often they wake up while nothing happens.
/// False where a promise is not kept.
bool compareHosts();

}  // namespace velmo::desktop
