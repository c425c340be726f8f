#include "model/account.h"

#include <utility>

namespace velmo {

namespace {

std::string wholeNumber(double number) {
    return std::to_string(static_cast<long long>(number));
}

}  // namespace

void Account::menuOpened(std::string_view itemName, const Point& location,
                         const std::vector<Entry>& entries) {
    text_.append("menu of ").append(itemName);
    text_ += " at " + wholeNumber(location.x) + ", " + wholeNumber(location.y) + ':';
    for (const Entry& entry : entries)
        text_.append(" [").append(entry.title).append("|").append(entry.keyEquivalent).append("]");
    text_ += "; ";
}

void Account::settingsRequested(std::optional<SettingsTab> tab, std::size_t accessRequests) {
    text_ += "settings on ";
    text_ += tab ? std::to_string(static_cast<int>(*tab)) : "any tab";
    text_ += " after " + std::to_string(accessRequests) + " requests for access; ";
}

std::string Account::take() {
    return std::exchange(text_, "");
}

}  // namespace velmo
