#pragma once

#include "geometry.h"
#include "macos/objc/object.h"

#include <cstdint>
#include <string>

namespace velmo::macos::doubles {

/// What the window server tells of a status item of another application. Points, origin at the top left.
Object itemWindow(std::uint32_t number, const std::string& owner, const Rect& bounds);
/// The same of an open menu of another application.
Object menuWindow();
/// What can be captured of the window of that number.
Object shareableWindow(std::uint32_t number);

}  // namespace velmo::macos::doubles
