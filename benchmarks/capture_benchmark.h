#pragma once

namespace velmo::desktop {

/// Prints how long pictures of icons take that are asked for together, beside fetching as many windows one
/// after another.
void compareCaptures();

}  // namespace velmo::desktop
