#pragma once

namespace velmo {

/// A function of one of the program's modules, which it loads on first use and keeps. `name` is the module's
/// file name. Null where the module is missing or does not load.
void* moduleFunction(const char* name, const char* function);

}  // namespace velmo
