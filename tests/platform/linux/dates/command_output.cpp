#include "command_output.h"

#include "built_files.h"

#include <array>
#include <cstdio>
#include <fstream>
#include <iterator>

namespace velmo {

std::string commandOutput(const std::string& command, bool& succeeded) {
    std::string output;
    FILE* pipe = popen(command.c_str(), "r");
    std::array<char, 65536> buffer{};
    for (std::size_t size = 0; pipe && (size = fread(buffer.data(), 1, buffer.size(), pipe)) > 0;)
        output.append(buffer.data(), size);
    succeeded = pipe && pclose(pipe) == 0;
    return output;
}

std::string testFile(const std::string& name) {
    return std::string(linuxTestFiles) + "/dates/" + name;
}

std::string zoneFile(const std::string& zone) {
    std::ifstream stream("/usr/share/zoneinfo/" + zone, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

}  // namespace velmo
