#pragma once

#include "fixed_string.h"

#include <cstddef>
#include <cstdint>
#include <type_traits>

// The Objective-C runtime's C interface, and all that differs between the system's own runtime and the GNU
// one, on which the tests run.

// Names that the runtimes give their types; they are never looked into.
struct objc_object;
struct objc_selector;
struct objc_class;
struct objc_ivar;

namespace velmo::macos {

using Id = objc_object*;
using Selector = const objc_selector*;
using RawClass = objc_class*;
using Implementation = void (*)();

#ifdef __APPLE__
#ifdef __x86_64__
using RawBool = signed char;
inline constexpr char rawBoolEncoding = 'c';
#else
using RawBool = bool;
inline constexpr char rawBoolEncoding = 'B';
#endif
#else
using RawBool = unsigned char;
inline constexpr char rawBoolEncoding = 'C';
#endif

extern "C" {
Selector sel_registerName(const char* name);
RawClass objc_getClass(const char* name);
RawClass objc_allocateClassPair(RawClass superclass, const char* name, std::size_t extraBytes);
void objc_registerClassPair(RawClass newClass);
bool class_addIvar(RawClass owner, const char* name, std::size_t size, std::uint8_t alignment,
                   const char* encoding);
bool class_addMethod(RawClass owner, Selector selector, Implementation implementation, const char* encoding);
objc_ivar* class_getInstanceVariable(RawClass owner, const char* name);
Implementation class_getMethodImplementation(RawClass owner, Selector selector);
std::ptrdiff_t ivar_getOffset(objc_ivar* variable);
// Only the system's runtime has these two for others to call.
RawClass object_getClass(Id object);
void objc_msgSend();
#ifndef __APPLE__
Implementation objc_msg_lookup(Id receiver, Selector selector);
#endif
}

/// The code that answers a message. `Result` decides how it hands its result over.
template <typename Result>
Implementation messageImplementation([[maybe_unused]] Id receiver, [[maybe_unused]] Selector selector) {
#ifndef __APPLE__
    return objc_msg_lookup(receiver, selector);
#elif defined(__x86_64__)
    // Results that do not fit two registers are written to memory that the caller names first, where
    // objc_msgSend looks for the receiver.
    if constexpr (std::is_class_v<Result>) {
        if constexpr (sizeof(Result) > 2 * sizeof(std::uint64_t))
            return class_getMethodImplementation(object_getClass(receiver), selector);
    }
    return &objc_msgSend;
#else
    return &objc_msgSend;
#endif
}

/// Looked up once.
template <FixedString name>
Selector selectorNamed() {
    static const Selector selector = sel_registerName(name.text());
    return selector;
}

/// Looked up once. Null where no framework has such a class.
template <FixedString name>
RawClass classNamed() {
    static const RawClass found = objc_getClass(name.text());
    return found;
}

}  // namespace velmo::macos
