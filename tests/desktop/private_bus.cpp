#include "private_bus.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <stdexcept>
#include <thread>
#include <utility>

namespace velmo::desktop {

namespace {

bool listens(const std::filesystem::path& file) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    file.string().copy(address.sun_path, sizeof address.sun_path - 1);
    const int descriptor = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const bool connected = connect(descriptor, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
    close(descriptor);
    return connected;
}

}  // namespace

PrivateBus::PrivateBus(const std::filesystem::path& folder, Environment environment)
    : environment_(std::move(environment)), configuration_(folder / "bus.conf"), socket_(folder / "bus") {
    std::ofstream file(configuration_);
    file << "<busconfig><type>session</type><listen>" << address() << "</listen>"
         << "<policy context='default'><allow send_destination='*'/><allow receive_sender='*'/>"
         << "<allow own='*'/></policy>";
    for (const auto* limit : {"max_incoming_bytes", "max_outgoing_bytes", "max_message_size"})
        file << "<limit name='" << limit << "'>1000000000</limit>";
    for (const auto* limit :
         {"max_match_rules_per_connection", "max_names_per_connection", "max_replies_per_connection",
          "max_completed_connections", "max_connections_per_user"})
        file << "<limit name='" << limit << "'>50000</limit>";
    file << "<servicedir>" << (folder / "services").string() << "</servicedir></busconfig>";
}

void PrivateBus::start() {
    std::filesystem::remove(socket_);
    daemon_.emplace(
        std::vector<std::string>{"dbus-daemon", "--nofork", "--config-file=" + configuration_.string()},
        environment_);
    for (int count = 0; count < 1000; ++count) {
        if (listens(socket_))
            return;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    throw std::runtime_error("the bus does not start");
}

}  // namespace velmo::desktop
