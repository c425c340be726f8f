#include "ns_data.h"

namespace velmo::macos {

NSData NSData::from(const std::vector<std::uint8_t>& bytes) {
    const void* start = bytes.data();
    return sendToClass<NSData, "dataWithBytes:length:">(start, NSUInteger{bytes.size()});
}

std::vector<std::uint8_t> NSData::bytes() const {
    const auto* start = static_cast<const std::uint8_t*>(send<const void*, "bytes">());
    const auto length = send<NSUInteger, "length">();
    return start == nullptr ? std::vector<std::uint8_t>() : std::vector<std::uint8_t>(start, start + length);
}

}  // namespace velmo::macos
