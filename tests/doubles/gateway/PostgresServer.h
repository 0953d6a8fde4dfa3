#pragma once

#include "doubles/gateway/ChildProcess.h"
#include "doubles/gateway/TemporaryFolder.h"

#include <filesystem>
#include <optional>
#include <string>

namespace vorq::gateway::testing {

/// A PostgreSQL server of its own in a temporary folder, reached by a socket there. It runs as
/// nobody where the test is started by root, which PostgreSQL refuses to run as, and ends with the
/// test however that ends. What fails throws, with the package to install if it is not there.
class PostgresServer {
  public:
    enum class Writes { NowhereForLong, ToTheDisk };

    explicit PostgresServer(Writes writes = Writes::NowhereForLong);
    ~PostgresServer();
    PostgresServer(const PostgresServer&) = delete;
    PostgresServer& operator=(const PostgresServer&) = delete;

    /// The one that the tests of a program share.
    static PostgresServer& shared();

    /// The address of an empty schema.
    [[nodiscard]] std::string freshAddress();
    /// The same of a database that no other test uses.
    [[nodiscard]] std::string freshDatabase();
    /// Runs SQL as the server's administrator.
    void administer(const std::string& sql) const;
    [[nodiscard]] std::filesystem::path dataFolder() const;

    /// Ends all connections and stops.
    void stop();
    void start();
    /// Keeps the connections and answers nobody, until `thaw`.
    void freeze() const;
    void thaw() const;

  private:
    [[nodiscard]] ChildProcess run(const std::string& program,
                                   std::vector<std::string> arguments) const;
    [[nodiscard]] std::string addressOf(const std::string& database) const;
    void awaitReady() const;

    TemporaryFolder m_folder;
    std::filesystem::path m_programs;
    Writes m_writes;
    std::optional<ChildProcess> m_process;
    int m_schemas = 0;
};

} // namespace vorq::gateway::testing
