#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace velmo::macos {

struct SharedField {
    /// As the system calls both.
    std::string record;
    std::string field;
    /// Bytes from the start of the record.
    std::size_t offset = 0;
    /// As it is written in the list of what the program uses.
    std::string type;
};

/// The records that the program and the system have in common.
std::vector<SharedField> sharedRecords();

}  // namespace velmo::macos
