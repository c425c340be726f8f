#pragma once

#include <string>

namespace velmo::status_notifier {

/// A tooltip as rich text: the title in bold above the description. Of the description's markup bold, italic,
/// underlined, line breaks and lists are kept; everything else, links and images among it, leaves its text
/// alone. Empty where both are.
std::string toolTipMarkup(const std::string& title, const std::string& description);

}  // namespace velmo::status_notifier
