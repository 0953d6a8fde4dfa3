#pragma once

#include <chrono>
#include <expected>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace vorq::gateway {

/// What the user typed.
struct CommandLine {
    enum class Verb { Serve, Handoff, ResetLink, Help, Version };
    Verb verb = Verb::Help;
    std::string host = "127.0.0.1";
    int port = 8787;
    std::optional<std::filesystem::path> dataFolder;
    std::optional<std::filesystem::path> configFile;
    std::chrono::milliseconds streamDelay{30};
    /// Of the account whose password is forgotten; empty for this computer's.
    std::string email;
    /// Address of a database in place of the state file; empty for what the settings say.
    std::string database;
    /// The same of the gateway behind a proxy.
    std::string publicUrl;
};

/// Reads the arguments behind the program's name; else a sentence about what is wrong with them.
[[nodiscard]] std::expected<CommandLine, std::string>
parseCommandLine(const std::vector<std::string>& arguments);

/// The text of --help.
[[nodiscard]] std::string usage();

} // namespace vorq::gateway
