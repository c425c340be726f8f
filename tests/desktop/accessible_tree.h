#pragma once

#include "child_process.h"
#include "x_observer.h"

#include <optional>
#include <string>
#include <vector>

namespace velmo::desktop {

struct AccessibleElement {
    std::string role;
    std::string name;
    std::string description;
    /// On the screen.
    Area place;

    std::string roleAndName() const { return role + ": " + name; }
};

/// What assistive programs are told of Velmo, and do with it.
class AccessibleTree {
public:
    /// Starts the bus that they use, beside the session bus of the environment.
    explicit AccessibleTree(const Environment& environment);

    /// All that is in the window of that name, itself first, in the order of reading.
    std::vector<AccessibleElement> elementsOf(const std::string& windowName) const;
    /// "role: name" of those that have a name.
    std::vector<std::string> namesIn(const std::string& windowName) const;
    /// Those that a person can work, whether they have a name or not.
    std::vector<AccessibleElement> controlsOf(const std::string& windowName) const;
    /// Absent where nothing in the window is called so.
    std::optional<AccessibleElement> element(const std::string& windowName,
                                             const std::string& roleAndName) const;
    void activate(const std::string& name) const { client({name}); }

private:
    std::string client(const std::vector<std::string>& arguments) const;

    Environment environment_;
    ChildProcess launcher_;
};

}  // namespace velmo::desktop
