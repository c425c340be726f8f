// Prints what the macOS desktop uses of the system, one entry a line, for the check against the frameworks'
// interfaces and for the link stubs.

#include "macos/objc/block.h"
#include "macos/objc/function.h"
#include "macos/objc/global.h"
#include "platform/macos/contract/shared_numbers.h"
#include "platform/macos/contract/shared_records.h"

#include <iostream>

namespace velmo::macos {
namespace {

template <auto... functions>
void useFunctions() {
    (contract::use<Function<functions>>(), ...);
}

/// The lowest layer calls them as they are, below everything that lists what it uses. Nothing else of the
/// runtime can be linked on a Mac: its stub has what is on the list.
void useRuntime() {
    useFunctions<&sel_registerName, &objc_getClass, &objc_allocateClassPair, &objc_registerClassPair,
                 &class_addIvar, &class_addMethod, &class_getInstanceVariable, &class_getMethodImplementation,
                 &ivar_getOffset, &object_getClass, &objc_msgSend, &_Block_copy, &_Block_release>();
    contract::use<Global<&_NSConcreteStackBlock, void*>>();
}

}  // namespace
}  // namespace velmo::macos

int main() {
    velmo::macos::useRuntime();
    for (const auto& entry : velmo::macos::contract::entries())
        std::cout << entry << '\n';
    for (const auto& [enumeration, member, number] : velmo::macos::sharedNumbers())
        std::cout << "number " << (enumeration.empty() ? "-" : enumeration) << ' ' << member << ' ' << number
                  << '\n';
    for (const auto& [record, field, offset, type] : velmo::macos::sharedRecords())
        std::cout << "field " << record << ' ' << field << ' ' << offset << ' ' << type << '\n';
}
