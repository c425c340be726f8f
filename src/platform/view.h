#pragma once

#include "view_content.h"

#include <string>
#include <utility>
#include <vector>

namespace velmo {

/// A description of what a window shows, as a value. Whoever shows it turns it into the system's own controls
/// and, once a new description arrives, changes only what differs. A control that was changed by the user and
/// whose handler has returned shows what the latest description says.
struct View {
    ViewContent content;
    /// What each kind of content makes of them is said there.
    std::vector<View> children = {};
    std::vector<Modifier> modifiers = {};
    /// Names the view among its siblings, so that it stays itself when they come and go. Empty: its place
    /// names it.
    std::string id = {};

    /// The view with one more modifier.
    View with(Modifier modifier) && {
        modifiers.push_back(std::move(modifier));
        return std::move(*this);
    }
    View identifiedBy(std::string name) && {
        id = std::move(name);
        return std::move(*this);
    }

    bool operator==(const View&) const = default;
};

using Views = std::vector<View>;

}  // namespace velmo
