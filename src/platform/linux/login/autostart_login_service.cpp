#include "autostart_login_service.h"

#include "linux/defaults/atomic_file.h"
#include "linux/login/command_line.h"
#include "linux/process/current_desktop.h"
#include "linux/process/find_program.h"
#include "linux/process/running_program.h"
#include "linux/process/split_list.h"
#include "linux/process/xdg_folders.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

namespace velmo {

namespace {

namespace fs = std::filesystem;

constexpr const char* entryName = "velmo.desktop";
/// Bytes. No entry comes near.
constexpr std::uintmax_t largestEntry = 1 << 20;

/// With which some desktops switch an entry off.
constexpr std::array<std::string_view, 2> desktopSwitches = {"X-GNOME-Autostart-enabled",
                                                             "X-MATE-Autostart-enabled"};

/// An entry with no other keys holds nothing that only its writer knows.
constexpr std::array<std::string_view, 11> ordinaryKeys = {
    "Type", "Version", "Name",   "GenericName",      "Comment",         "Exec",
    "Icon", "TryExec", "Hidden", desktopSwitches[0], desktopSwitches[1]};

/// Something has this name, whatever it is.
bool isThere(const fs::path& file) {
    std::error_code error;
    return !file.empty() && fs::exists(fs::symlink_status(file, error));
}

std::string words(const fs::path& file, const std::error_code& error) {
    return file.string() + ": " + error.message();
}

/// What is no ordinary file, such as a link to the null device, reads as an empty entry.
std::error_code readEntry(const fs::path& file, DesktopEntry& entry) {
    std::error_code error;
    if (!fs::is_regular_file(file, error))
        return {};
    if (fs::file_size(file, error) > largestEntry)
        return std::make_error_code(std::errc::file_too_large);
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        return {errno, std::generic_category()};
    const std::string text(std::istreambuf_iterator<char>(stream), {});
    entry = DesktopEntry(text);
    return {};
}

bool isSwitchedOff(const DesktopEntry& entry) {
    return entry.isTrue("Hidden") || std::any_of(desktopSwitches.begin(), desktopSwitches.end(),
                                                 [&](auto key) { return entry.isFalse(key); });
}

/// Empty where it runs none, as does an entry that is there only to hide another one.
std::string programOf(const DesktopEntry& entry) {
    return command_line::programOf(entry.value("Exec").value_or(""));
}

}  // namespace

AutostartLoginService::AutostartLoginService(Environment environment, const ProcessInfo& process)
    : environment_(std::move(environment)), process_(process) {}

fs::path AutostartLoginService::userEntry() const {
    return environment_.userFolder.empty() ? fs::path() : environment_.userFolder / entryName;
}

/// Empty where there is none.
fs::path AutostartLoginService::systemEntry() const {
    for (const auto& folder : environment_.systemFolders) {
        if (isThere(folder / entryName))
            return folder / entryName;
    }
    return {};
}

LoginServiceStatus AutostartLoginService::status() const {
    const auto file = isThere(userEntry()) ? userEntry() : systemEntry();
    DesktopEntry entry;
    if (readEntry(file, entry) || programOf(entry).empty())
        return LoginServiceStatus::notRegistered;
    if (!programIsThere(entry))
        return LoginServiceStatus::notFound;
    if (isSwitchedOff(entry) || !isShownHere(entry))
        return LoginServiceStatus::requiresApproval;
    return LoginServiceStatus::enabled;
}

bool AutostartLoginService::programIsThere(const DesktopEntry& entry) const {
    const auto required = entry.value("TryExec");
    return (!required || findProgram(*required, process_)) && findProgram(programOf(entry), process_);
}

bool AutostartLoginService::runsThisProgram(const DesktopEntry& entry) const {
    const auto found = findProgram(programOf(entry), process_);
    std::error_code error;
    return found && fs::equivalent(*found, environment_.program, error);
}

bool AutostartLoginService::isShownHere(const DesktopEntry& entry) const {
    const auto only = entry.value("OnlyShowIn");
    const auto in = splitList(only.value_or(""), ';');
    const auto notIn = splitList(entry.value("NotShowIn").value_or(""), ';');
    for (const auto& desktop : currentDesktops(process_)) {
        if (std::find(in.begin(), in.end(), desktop) != in.end())
            return true;
        if (std::find(notIn.begin(), notIn.end(), desktop) != notIn.end())
            return false;
    }
    return !only;
}

std::optional<std::string> AutostartLoginService::registerService() {
    const auto& program = environment_.program;
    if (access(program.c_str(), X_OK) != 0)
        return words(program, {errno, std::generic_category()});
    if (!isThere(userEntry()) && status() == LoginServiceStatus::enabled)
        return std::nullopt;

    DesktopEntry entry;
    if (const auto error = readEntry(userEntry(), entry))
        return words(userEntry(), error);
    const std::array<std::pair<const char*, const char*>, 3> description = {
        {{"Type", "Application"}, {"Name", "Velmo"}, {"Comment", "Keeps the menu bar tidy"}}};
    for (const auto& [key, text] : description) {
        if (!entry.value(key))
            entry.set(key, text);
    }
    // The user may have added arguments.
    if (!runsThisProgram(entry))
        entry.set("Exec", command_line::running(program.native()));
    entry.set("TryExec", program.native());
    entry.remove("Hidden");
    for (const auto key : desktopSwitches) {
        if (entry.isFalse(key))
            entry.remove(key);
    }
    return write(entry);
}

std::optional<std::string> AutostartLoginService::unregisterService() {
    const auto file = userEntry();
    const bool hidesAnother = !systemEntry().empty();
    if (!isThere(file) && !hidesAnother)
        return std::nullopt;
    DesktopEntry entry;
    if (const auto error = readEntry(file, entry))
        return words(file, error);
    if (!hidesAnother && entry.hasOnly(ordinaryKeys)) {
        if (unlink(file.c_str()) != 0)
            return words(file, {errno, std::generic_category()});
        return std::nullopt;
    }
    entry.remove("Exec");
    entry.remove("TryExec");
    if (!entry.value("Type"))
        entry.set("Type", "Application");
    if (!entry.value("Name"))
        entry.set("Name", "Velmo");
    entry.set("Hidden", "true");
    return write(entry);
}

std::optional<std::string> AutostartLoginService::write(const DesktopEntry& entry) const {
    const auto file = userEntry();
    std::error_code error;
    if (file.empty())
        return std::make_error_code(std::errc::no_such_file_or_directory).message();
    // A link to the null device, which masks an entry, gives way.
    if (fs::is_symlink(file, error) && fs::exists(file, error) && !fs::is_regular_file(file, error) &&
        unlink(file.c_str()) != 0)
        return words(file, {errno, std::generic_category()});
    if ((error = replaceFile(file, entry.text())))
        return words(file, error);
    return std::nullopt;
}

AutostartLoginService::Environment autostartEnvironment() {
    AutostartLoginService::Environment environment;
    environment.program = runningProgram();
    if (const auto folder = configurationFolder(); !folder.empty())
        environment.userFolder = folder / "autostart";
    for (const auto& folder : systemConfigurationFolders())
        environment.systemFolders.push_back(folder / "autostart");
    return environment;
}

}  // namespace velmo
