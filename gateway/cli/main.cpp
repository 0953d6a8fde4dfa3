#include "cli/CommandLine.h"
#include "cli/Commands.h"

#include <cstdio>
#include <exception>
#include <expected>
#include <string>
#include <vector>

namespace {

using vorq::gateway::CommandLine;

int run(const CommandLine& line) {
    switch (line.verb) {
    case CommandLine::Verb::Serve:
        return vorq::gateway::runServe(line);
    case CommandLine::Verb::Handoff:
        return vorq::gateway::runHandoff(line);
    case CommandLine::Verb::ResetLink:
        return vorq::gateway::runResetLink(line);
    case CommandLine::Verb::Help:
        std::fputs(vorq::gateway::usage().c_str(), stdout);
        return 0;
    case CommandLine::Verb::Version:
        std::puts("vorq-gateway " VORQ_VERSION);
        return 0;
    }
    return 2;
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const std::expected<CommandLine, std::string> line = vorq::gateway::parseCommandLine(arguments);
    if (!line) {
        std::fprintf(stderr, "vorq-gateway: %s See vorq-gateway --help.\n", line.error().c_str());
        return 2;
    }
    try {
        return run(*line);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "vorq-gateway: %s\n", error.what());
        return 1;
    }
}
