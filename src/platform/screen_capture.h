#pragma once

namespace velmo {

/// Pictures of other programs' windows, and the user's consent to them.
class ScreenCapture {
public:
    virtual ~ScreenCapture() = default;

    /// True where pictures may be taken. Asks nobody.
    virtual bool preflightAccess() const = 0;
    /// Asks for consent where it is missing, in the system's own way. True where pictures may be taken.
    virtual bool requestAccess() = 0;
};

}  // namespace velmo
