// Prints what the macOS desktop uses of the system, one entry a line, for the check against the frameworks'
// interfaces and for the link stubs.

#include "macos/objc/contract.h"
#include "platform/macos/contract/shared_numbers.h"
#include "platform/macos/contract/shared_records.h"

#include <iostream>

int main() {
    for (const auto& entry : velmo::macos::contract::entries())
        std::cout << entry << '\n';
    for (const auto& [enumeration, member, number] : velmo::macos::sharedNumbers())
        std::cout << "number " << (enumeration.empty() ? "-" : enumeration) << ' ' << member << ' ' << number
                  << '\n';
    for (const auto& [record, field, offset, type] : velmo::macos::sharedRecords())
        std::cout << "field " << record << ' ' << field << ' ' << offset << ' ' << type << '\n';
}
