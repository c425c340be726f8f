#pragma once

#include <string>

namespace velmo {

/// What the desktop opens on a program's behalf.
class Workspace {
public:
    virtual ~Workspace() = default;

    /// Opens an address with whatever is in charge of it. Nothing happens where nobody is, or where it is no
    /// address.
    virtual void open(const std::string& address) = 0;
};

}  // namespace velmo
