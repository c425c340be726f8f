#pragma once

namespace velmo {

/// How much of the menu bar is shown.
enum class RevealLevel {
    /// Both hidden sections are hidden.
    none = 0,
    /// The section between the two dividers is shown.
    hidden = 1,
    /// The always-hidden section is shown too.
    all = 2,
};

}  // namespace velmo
