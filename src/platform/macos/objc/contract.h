#pragma once

#include <string>

#ifdef VELMO_LISTS_CONTRACT
#include <set>
#endif

namespace velmo::macos::contract {

#ifdef VELMO_LISTS_CONTRACT

/// Every message, function and constant that the program can use, one a line. Entries come from the very
/// templates that use them, so that the list is complete and holds nothing else.
inline std::set<std::string>& entries() {
    static std::set<std::string> known;
    return known;
}

template <typename Entry>
struct Listed {
    static inline const bool isListed = entries().insert(Entry::text()).second;
};

/// Puts what the calling code uses on the list, whether or not it ever runs.
template <typename Entry>
void use() {
    static_cast<void>(&Listed<Entry>::isListed);
}

#else

/// Costs nothing where no list is asked for.
template <typename Entry>
void use() {}

#endif

}  // namespace velmo::macos::contract
