#include "icon_files.h"

#include <fstream>

namespace velmo::desktop {

void writeSquare(const std::filesystem::path& file, const std::string& color) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file) << R"(<svg xmlns="http://www.w3.org/2000/svg" width="16" height="16">)"
                        << R"(<rect width="16" height="16" fill=")" << color << R"("/></svg>)";
}

void writeTheme(const std::filesystem::path& themes, const std::string& name, const std::string& color) {
    const auto folder = themes / name;
    writeSquare(folder / "scalable" / "themed.svg", color);
    std::ofstream(folder / "index.theme")
        << "[Icon Theme]\nName=" << name << "\nComment=Of a test\nDirectories=scalable\n\n"
        << "[scalable]\nSize=16\nMinSize=8\nMaxSize=256\nType=Scalable\n";
}

}  // namespace velmo::desktop
