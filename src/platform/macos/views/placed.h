#pragma once

#include "macos/appkit/ns_view.h"

#include <utility>

namespace velmo::macos {

/// A view of the system's that lies on a surface, above what is there, until this goes.
template <typename Handle>
class Placed {
public:
    Placed(const NSView& surface, Handle view) : view_(std::move(view)) { surface.addSubview(view_); }
    Placed(Placed&& other) noexcept = default;
    Placed(const Placed&) = delete;
    Placed& operator=(const Placed&) = delete;
    Placed& operator=(Placed&&) = delete;
    ~Placed() { view_.removeFromSuperview(); }

    const Handle& operator*() const { return view_; }
    const Handle* operator->() const { return &view_; }

private:
    Handle view_;
};

}  // namespace velmo::macos
