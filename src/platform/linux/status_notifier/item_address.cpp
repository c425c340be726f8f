#include "item_address.h"

#include <systemd/sd-bus.h>

namespace velmo::status_notifier {

namespace {

constexpr const char* usualPath = "/StatusNotifierItem";
/// A path may be as long as a message, and is kept. The bus takes no rule for signals of longer ones.
constexpr std::size_t longestItemPath = 512;

}  // namespace

std::optional<ItemAddress> parseItemAddress(const std::string& text, const std::string& sender) {
    const auto slash = text.find('/');
    ItemAddress address;
    address.service = slash == 0 ? sender : text.substr(0, slash);
    address.path = slash == std::string::npos ? usualPath : text.substr(slash);
    if (address.path.size() > longestItemPath || sd_bus_service_name_is_valid(address.service.c_str()) <= 0 ||
        sd_bus_object_path_is_valid(address.path.c_str()) <= 0)
        return std::nullopt;
    return address;
}

}  // namespace velmo::status_notifier
