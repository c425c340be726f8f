#include "beside_program.h"

namespace velmo {

std::filesystem::path findBesideProgram(const std::string& name) {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error)
        return {};
    const auto folder = program.parent_path();
    for (const auto& file : {folder / name, folder.parent_path() / "lib" / "velmo" / name}) {
        if (std::filesystem::exists(file, error))
            return file;
    }
    return {};
}

}  // namespace velmo
