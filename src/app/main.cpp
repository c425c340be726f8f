#include "app/run_application.h"
#include "linux/linux_desktop.h"

#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>

namespace {

int run() {
    velmo::LinuxDesktop desktop;
    std::string problem;
    switch (desktop.start(problem)) {
        case velmo::LinuxDesktop::Start::alreadyRunning:
            return EXIT_SUCCESS;
        case velmo::LinuxDesktop::Start::failed:
            std::cerr << "velmo: " << problem << '\n';
            return EXIT_FAILURE;
        case velmo::LinuxDesktop::Start::ready:
            break;
    }
    velmo::runApplication(desktop.platform());
    return desktop.displayLost() ? EXIT_FAILURE : EXIT_SUCCESS;
}

}  // namespace

int main() {
    try {
        return run();
    } catch (const std::exception& error) {
        std::cerr << "velmo: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
