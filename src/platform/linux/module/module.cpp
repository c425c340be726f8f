#include "module.h"

#include <dlfcn.h>

#include <filesystem>
#include <system_error>

namespace velmo {

namespace {

/// Beside the program, as it is built, or in the library folder beside the program's, as it is installed.
void* open(const char* name) {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error)
        return nullptr;
    const auto folder = program.parent_path();
    for (const auto& file : {folder / name, folder.parent_path() / "lib" / "velmo" / name}) {
        if (std::filesystem::exists(file, error))
            return dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    }
    return nullptr;
}

}  // namespace

void* moduleFunction(const char* name, const char* function) {
    // Never closed: libraries leave things behind that run at the very end.
    void* module = open(name);
    return module ? dlsym(module, function) : nullptr;
}

}  // namespace velmo
