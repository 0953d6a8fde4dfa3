#pragma once

#include "doubles/gateway/PostgresServer.h"
#include "doubles/gateway/TemporaryFolder.h"
#include "storage/SharedDatabase.h"
#include "storage/postgres/PostgresPool.h"
#include "storage/sqlite/SharedStateFile.h"
#include "storage/sqlite/StateFile.h"
#include "support/Secrets.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace vorq::gateway::testing {

/// The kinds of database that a gateway may keep its state in.
enum class StateKind { File, Server };

/// Opens the state file, or a new one.
inline SqliteDatabase openFile(const std::filesystem::path& folder) {
    initSecrets();
    return openState(folder, [](const std::string&) {});
}

/// The state of one test, empty at first. Each opening is that of another gateway.
class TestState {
  public:
    explicit TestState(StateKind kind) {
        initSecrets();
        if (kind == StateKind::Server) address = PostgresServer::shared().freshAddress();
    }

    [[nodiscard]] std::unique_ptr<SharedDatabase> open() const {
        if (!address.empty()) return std::make_unique<PostgresPool>(address);
        return std::make_unique<SharedStateFile>(openFile(folder.path() / "state"));
    }
    [[nodiscard]] bool isOnServer() const { return !address.empty(); }
    /// Of the server.
    [[nodiscard]] std::string schema() const { return address.substr(address.rfind("3D") + 2); }

    TemporaryFolder folder;
    /// Of the server; empty for a file.
    std::string address;
};

/// For INSTANTIATE_TEST_SUITE_P.
inline const auto kBothStates = ::testing::Values(StateKind::File, StateKind::Server);
inline std::string nameOfState(const ::testing::TestParamInfo<StateKind>& info) {
    return info.param == StateKind::File ? "Sqlite" : "Postgres";
}

} // namespace vorq::gateway::testing
