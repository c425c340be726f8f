#pragma once

namespace velmo {

/// The user's consent to acting on other applications.
class Accessibility {
public:
    virtual ~Accessibility() = default;

    virtual bool isProcessTrusted() const = 0;
    /// The same; where consent is missing and `prompts` is set, the system asks the user for it.
    virtual bool isProcessTrusted(bool prompts) = 0;
};

}  // namespace velmo
