#include "cli/CommandTable.h"

#include <array>

namespace vorq::gateway {
namespace {

constexpr int kLargestPort = 65535;
constexpr int kLongestDelayMs = 60'000;

constexpr OptionRow kDataOption{.name = "--data",
                                .value = "DIR",
                                .help = "where accounts are kept ($XDG_DATA_HOME/Vorq)",
                                .namesFile = true};

constexpr OptionRow kDatabaseOption{
    .name = "--database",
    .value = "URL",
    .help = "where accounts are kept instead, for several gateways (postgresql://...)"};
constexpr OptionRow kPublicOption{.name = "--public-url",
                                  .value = "URL",
                                  .help = "where a proxy makes the gateway reached (https://...)"};
constexpr OptionRow kHostOption{
    .name = "--host", .value = "HOST", .help = "address to listen on (127.0.0.1)"};
constexpr OptionRow kPortOption{.name = "--port",
                                .value = "PORT",
                                .help = "port to listen on (8787); 0 takes a free one",
                                .largest = kLargestPort};
constexpr OptionRow kConfigOption{.name = "--config",
                                  .value = "FILE",
                                  .help = "settings ($XDG_CONFIG_HOME/Vorq/gateway.json)",
                                  .namesFile = true};
constexpr OptionRow kDelayOption{.name = "--stream-delay",
                                 .value = "MS",
                                 .help =
                                     "pause between two steps of a reply made without a model (30)",
                                 .largest = kLongestDelayMs};
constexpr OptionRow kEmailOption{
    .name = "--email", .value = "EMAIL", .help = "address of the account (this computer's own)"};

constexpr std::array kServeOptions = {
    kHostOption,     kPortOption,   kPublicOption, kDataOption,
    kDatabaseOption, kConfigOption, kDelayOption,
};
constexpr std::array kHandoffOptions = {kDataOption, kDatabaseOption, kConfigOption};
constexpr std::array kResetOptions = {
    kEmailOption, kHostOption,     kPortOption,   kPublicOption,
    kDataOption,  kDatabaseOption, kConfigOption,
};

constexpr std::array kAllOptions = {
    kHostOption, kPortOption,     kPublicOption, kEmailOption,
    kDataOption, kDatabaseOption, kConfigOption, kDelayOption,
};

constexpr std::array kCommands = {
    CommandRow{.name = "serve",
               .help = "answers Vorq until it is told to stop (Ctrl+C, SIGTERM)",
               .options = kServeOptions},
    CommandRow{.name = "handoff",
               .help =
                   "prints a vorq:// address that signs Vorq in to this computer's account, once",
               .options = kHandoffOptions},
    CommandRow{.name = "reset-link",
               .help = "prints the address of a page that sets a new password, once",
               .options = kResetOptions},
};

constexpr CommandPage kPage = {
    .program = "vorq-gateway",
    .summary = "the backend of Vorq, on this computer.",
    .rows = kCommands,
    .options = kAllOptions,
    .remarks =
        "Without a provider, replies are made from the words of the text alone. Name one in the "
        "settings\n"
        "file, or with VORQ_PROVIDER_URL, VORQ_PROVIDER_KEY and VORQ_PROVIDER_MODEL."};

} // namespace

const CommandPage& commandPage() {
    return kPage;
}

} // namespace vorq::gateway
