#pragma once

#include "accessibility.h"

namespace velmo::macos {

class MacosAccessibility : public Accessibility {
public:
    bool isProcessTrusted() const override;
    bool isProcessTrusted(bool prompts) override;
};

}  // namespace velmo::macos
