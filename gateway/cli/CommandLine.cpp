#include "cli/CommandLine.h"

#include "support/Filled.h"

#include <charconv>
#include <map>

namespace vorq::gateway {
namespace {

using Verb = CommandLine::Verb;
using Outcome = std::expected<void, std::string>;

constexpr int kLargestPort = 65535;
constexpr int kLongestDelayMs = 60'000;

std::expected<int, std::string> numberUpTo(int largest, const std::string& option,
                                           const std::string& text) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool whole = error == std::errc() && end == text.data() + text.size();
    if (!whole || value < 0 || value > largest) {
        return std::unexpected(
            filled("{} takes a number from 0 to {}, not \"{}\".", option, largest, text));
    }
    return value;
}

Outcome apply(CommandLine& line, const std::string& option, const std::string& value) {
    if (value.empty()) return std::unexpected(filled("{} needs a value.", option));
    if (option == "--data") {
        line.dataFolder = value;
    } else if (option == "--host") {
        line.host = value;
    } else if (option == "--config") {
        line.configFile = value;
    } else {
        const bool isPort = option == "--port";
        const auto number = numberUpTo(isPort ? kLargestPort : kLongestDelayMs, option, value);
        if (!number) return std::unexpected(number.error());
        if (isPort) {
            line.port = *number;
        } else {
            line.streamDelay = std::chrono::milliseconds(*number);
        }
    }
    return {};
}

bool isOptionOf(Verb verb, const std::string& option) {
    if (option == "--data") return true;
    return verb == Verb::Serve && (option == "--host" || option == "--port" ||
                                   option == "--config" || option == "--stream-delay");
}

} // namespace

std::expected<CommandLine, std::string>
parseCommandLine(const std::vector<std::string>& arguments) {
    static const std::map<std::string, Verb> verbs = {{"serve", Verb::Serve},
                                                      {"handoff", Verb::Handoff},
                                                      {"--help", Verb::Help},
                                                      {"-h", Verb::Help},
                                                      {"--version", Verb::Version}};
    if (arguments.empty()) return std::unexpected("Tell me what to do: serve or handoff.");
    const auto verb = verbs.find(arguments.front());
    if (verb == verbs.end()) {
        return std::unexpected(filled("There is no command \"{}\".", arguments.front()));
    }
    CommandLine line;
    line.verb = verb->second;
    for (std::size_t i = 1; i < arguments.size(); ++i) {
        std::string option = arguments[i];
        if (option == "--help" || option == "-h") {
            line.verb = Verb::Help;
            return line;
        }
        std::string value;
        const std::size_t equals = option.find('=');
        const bool isJoined = option.starts_with("--") && equals != std::string::npos;
        if (isJoined) {
            value = option.substr(equals + 1);
            option.resize(equals);
        }
        if (!isOptionOf(line.verb, option)) {
            return std::unexpected(filled("{} takes no \"{}\".", arguments.front(), option));
        }
        if (!isJoined && i + 1 < arguments.size()) value = arguments[++i];
        if (const Outcome outcome = apply(line, option, value); !outcome) {
            return std::unexpected(outcome.error());
        }
    }
    return line;
}

std::string usage() {
    return R"(vorq-gateway: the backend of Vorq, on this computer.

Usage:
  vorq-gateway serve [--host HOST] [--port PORT] [--data DIR] [--config FILE] [--stream-delay MS]
  vorq-gateway handoff [--data DIR]
  vorq-gateway --help | --version

serve     answers Vorq until it is told to stop (Ctrl+C, SIGTERM)
handoff   prints a vorq:// address that signs Vorq in to this computer's account, once

  --host HOST         address to listen on (127.0.0.1)
  --port PORT         port to listen on (8787); 0 takes a free one
  --data DIR          where accounts are kept ($XDG_DATA_HOME/Vorq)
  --config FILE       settings ($XDG_CONFIG_HOME/Vorq/gateway.json)
  --stream-delay MS   pause between two steps of a reply made without a model (30)

Without a provider, replies are made from the words of the text alone. Name one in the settings
file, or with VORQ_PROVIDER_URL, VORQ_PROVIDER_KEY and VORQ_PROVIDER_MODEL.
)";
}

} // namespace vorq::gateway
