#pragma once

namespace velmo::desktop {

/// Prints how long pictures of icons take that are asked for together, beside fetching as many windows one
/// after another.
/// False where a promise is not kept.
bool compareCaptures();

}  // namespace velmo::desktop
