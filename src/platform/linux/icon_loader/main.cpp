#include "linux/icon_loader/confinement.h"
#include "linux/icon_loader/icon_finder.h"
#include "linux/icons/icon_protocol.h"
#include "linux/icons/icon_request.h"

#include <QGuiApplication>
#include <QImageReader>

#include <poll.h>
#include <sys/resource.h>
#include <unistd.h>

#include <csignal>

// Reads requests for icons from standard input and answers them on standard output, one after the other,
// until the input ends or nothing has been asked for a while.

namespace velmo {

namespace {

constexpr int largestImageMegabytes = 64;
constexpr rlim_t mostMemory = rlim_t{1} << 30;
/// Of the processor. Another process takes over then.
constexpr rlim_t mostSeconds = 60;

bool readAll(void* target, std::size_t size) {
    auto* place = static_cast<char*>(target);
    while (size > 0) {
        const ssize_t count = read(STDIN_FILENO, place, size);
        if (count <= 0)
            return false;
        place += count;
        size -= static_cast<std::size_t>(count);
    }
    return true;
}

bool writeAll(const void* source, std::size_t size) {
    const auto* place = static_cast<const char*>(source);
    while (size > 0) {
        const ssize_t count = write(STDOUT_FILENO, place, size);
        if (count <= 0)
            return false;
        place += count;
        size -= static_cast<std::size_t>(count);
    }
    return true;
}

bool readText(std::string& text, std::uint32_t size, std::uint32_t most) {
    if (size > most)
        return false;
    text.resize(size);
    return readAll(text.data(), size);
}

bool readRequest(IconRequest& request) {
    icon_protocol::Request head;
    if (!readAll(&head, sizeof head) || head.side == 0 || head.side > icon_protocol::largestSide)
        return false;
    request.side = static_cast<int>(head.side);
    return readText(request.name, head.nameSize, icon_protocol::longestText) &&
           readText(request.folder, head.folderSize, icon_protocol::longestText) &&
           readText(request.theme, head.themeSize, icon_protocol::longestText) &&
           readText(request.data, head.dataSize, icon_protocol::mostData);
}

bool answer(const FoundIcon& icon) {
    const QImage image = icon.image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    const icon_protocol::Answer head = {static_cast<std::uint32_t>(image.width()),
                                        static_cast<std::uint32_t>(image.height()),
                                        icon.isTemplate ? 1U : 0U};
    if (!writeAll(&head, sizeof head))
        return false;
    for (int row = 0; row < image.height(); ++row) {
        if (!writeAll(image.constScanLine(row), static_cast<std::size_t>(image.width()) * 4))
            return false;
    }
    return true;
}

bool somethingIsAsked() {
    pollfd input = {STDIN_FILENO, POLLIN, 0};
    return poll(&input, 1, icon_protocol::idleMilliseconds) > 0;
}

/// Pictures come from strangers: whoever gets the better of a decoder finds neither files of ours open, nor a
/// way to write one or to stay for long.
void setLimits() {
    close_range(STDERR_FILENO + 1, ~0U, 0);
    // The sanitizer's shadow alone takes more.
#ifndef __SANITIZE_ADDRESS__
    const rlimit memory = {mostMemory, mostMemory};
    setrlimit(RLIMIT_AS, &memory);
#endif
    const rlimit time = {mostSeconds, mostSeconds};
    setrlimit(RLIMIT_CPU, &time);
    const rlimit none = {0, 0};
    setrlimit(RLIMIT_CORE, &none);
    // The libraries' caches do without.
    std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &none);
    QImageReader::setAllocationLimit(largestImageMegabytes);
}

}  // namespace

}  // namespace velmo

int main(int argc, char** argv) {
    velmo::setLimits();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qunsetenv("QT_QPA_PLATFORMTHEME");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    const QGuiApplication application(argc, argv);
    // The toolkit has all that it needs now, and nothing that is foreign has been read.
    if (!velmo::confineProcess() && velmo::processCanBeConfined())
        return 1;
    velmo::IconFinder finder;
    velmo::IconRequest request;
    while (velmo::somethingIsAsked() && velmo::readRequest(request) && velmo::answer(finder.find(request)))
        continue;
    // Nothing is worth the time that an orderly end takes.
    _exit(0);
}
