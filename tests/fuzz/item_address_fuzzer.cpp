#include "bytes.h"
#include "linux/status_notifier/item_address.h"

#include <systemd/sd-bus.h>

#include <cstdlib>

/// Whatever a program registers: what is kept of it is an address on the bus, and short.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace velmo;
    constexpr std::size_t longestPath = 512;
    fuzz::Bytes bytes(data, size);
    const auto address = status_notifier::parseItemAddress(bytes.text(), ":1.7");
    if (address &&
        (sd_bus_service_name_is_valid(address->service.c_str()) <= 0 ||
         sd_bus_object_path_is_valid(address->path.c_str()) <= 0 || address->path.size() > longestPath))
        std::abort();
    return 0;
}
