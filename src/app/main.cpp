#include "app/run_application.h"
#include "linux/application/program_arguments.h"
#include "linux/linux_desktop.h"
#include "linux/x11/running_instance.h"

#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>
#include <variant>
#include <vector>

namespace {

using Arguments = velmo::ProgramArguments;

constexpr int usageMistake = 2;

int fail(const std::string& problem, int status = EXIT_FAILURE) {
    std::cerr << "velmo: " << problem << '\n';
    return status;
}

int print(std::string_view text) {
    std::cout << text << std::flush;
    return std::cout ? EXIT_SUCCESS : fail("cannot write to the standard output");
}

int start() {
    velmo::LinuxDesktop desktop;
    std::string problem;
    switch (desktop.start(problem)) {
        case velmo::LinuxDesktop::Start::alreadyRunning:
            return EXIT_SUCCESS;
        case velmo::LinuxDesktop::Start::failed:
            return fail(problem);
        case velmo::LinuxDesktop::Start::ready:
            break;
    }
    velmo::runApplication(desktop.platform());
    return desktop.isCutOff() ? EXIT_FAILURE : EXIT_SUCCESS;
}

struct Answer {
    int operator()(Arguments::Start /*request*/) const { return start(); }
    int operator()(Arguments::Help /*request*/) const { return print(Arguments::help()); }
    int operator()(Arguments::Version /*request*/) const { return print("velmo " VELMO_VERSION "\n"); }
    int operator()(velmo::ApplicationCommand command) const {
        const auto problem = velmo::x11::tellRunningInstance(command);
        return problem ? fail(*problem) : EXIT_SUCCESS;
    }
    int operator()(const Arguments::Mistake& mistake) const { return fail(mistake.problem, usageMistake); }
};

}  // namespace

int main(int count, char** words) {
    try {
        // Without even a name there is nothing to skip.
        const std::vector<std::string_view> given(words + (count > 0 ? 1 : 0), words + count);
        return std::visit(Answer{}, Arguments::parse(given));
    } catch (const std::exception& error) {
        return fail(error.what());
    }
}
