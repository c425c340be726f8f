#include "atomic_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace velmo {

namespace {

/// Between the name of a file and what tells apart those who are about to replace it.
constexpr const char* scratchMark = ".next-";

/// So often a file that is being written may be taken for what a killed process has left.
constexpr int mostReplacements = 20;

std::error_code lastError() {
    return {errno, std::generic_category()};
}

bool makePrivateFolder(const std::filesystem::path& folder) {
    std::error_code error;
    if (folder.empty() || std::filesystem::is_directory(folder, error))
        return true;
    if (!makePrivateFolder(folder.parent_path()))
        return false;
    return mkdir(folder.c_str(), S_IRWXU) == 0 || errno == EEXIST;
}

bool writeAll(int descriptor, std::string_view content) {
    while (!content.empty()) {
        const ssize_t written = write(descriptor, content.data(), content.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        content.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

/// What a symbolic link stands for, whether or not that exists yet.
std::filesystem::path behindLinks(std::filesystem::path file) {
    constexpr int mostLinks = 40;
    std::error_code error;
    for (int count = 0; count < mostLinks && std::filesystem::is_symlink(file, error); ++count) {
        const auto target = std::filesystem::read_symlink(file, error);
        file = file.parent_path() / target;
    }
    return file;
}

/// The rename itself reaches the disk only with the folder.
void syncFolder(const std::filesystem::path& folder) {
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    fsync(descriptor);
    close(descriptor);
}

/// What processes have left that were killed while they wrote. Those that live hold a lock.
void removeLeftovers(const std::filesystem::path& target) {
    const std::string beginning = target.filename().string() + scratchMark;
    std::error_code error;
    std::filesystem::directory_iterator entry(target.parent_path(), error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        const auto& path = entry->path();
        if (!path.filename().string().starts_with(beginning))
            continue;
        const int descriptor = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC);
        if (descriptor < 0)
            continue;
        if (flock(descriptor, LOCK_EX | LOCK_NB) == 0)
            unlink(path.c_str());
        close(descriptor);
    }
}

std::error_code writeAndRename(const std::filesystem::path& target, const std::string& content) {
    // As many as mkostemp replaces by letters that nobody else has.
    constexpr std::size_t replaced = 6;
    std::string scratch = target.string() + scratchMark + std::string(replaced, 'X');
    const int descriptor = mkostemp(scratch.data(), O_CLOEXEC);
    if (descriptor < 0)
        return lastError();
    flock(descriptor, LOCK_EX | LOCK_NB);
    std::error_code error;
    if (!writeAll(descriptor, content) || fsync(descriptor) != 0 ||
        std::rename(scratch.c_str(), target.c_str()) != 0) {
        error = lastError();
        unlink(scratch.c_str());
    }
    close(descriptor);
    return error;
}

}  // namespace

std::error_code replaceFile(const std::filesystem::path& file, const std::string& content) {
    const auto target = behindLinks(file);
    std::error_code error;
    if (std::filesystem::exists(target, error) && !std::filesystem::is_regular_file(target, error))
        return std::make_error_code(std::filesystem::is_directory(target, error)
                                        ? std::errc::is_a_directory
                                        : std::errc::operation_not_permitted);
    const auto folder = target.parent_path();
    if (!makePrivateFolder(folder))
        return lastError();
    removeLeftovers(target);
    for (int attempt = 0; attempt < mostReplacements; ++attempt) {
        error = writeAndRename(target, content);
        if (error != std::errc::no_such_file_or_directory)
            break;
    }
    if (!error)
        syncFolder(folder);
    return error;
}

}  // namespace velmo
