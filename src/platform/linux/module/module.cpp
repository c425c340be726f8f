#include "module.h"

#include "linux/process/beside_program.h"

#include <dlfcn.h>

namespace velmo {

void* moduleFunction(const char* name, const char* function) {
    // Never closed: libraries leave things behind that run at the very end.
    const auto file = findBesideProgram(name);
    void* module = file.empty() ? nullptr : dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    return module ? dlsym(module, function) : nullptr;
}

}  // namespace velmo
