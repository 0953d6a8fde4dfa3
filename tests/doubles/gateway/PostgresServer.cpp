#include "doubles/gateway/PostgresServer.h"

#include "storage/postgres/PostgresClient.h"

#include <unistd.h>

#include <chrono>
#include <csignal>
#include <fstream>
#include <stdexcept>
#include <thread>

namespace vorq::gateway::testing {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr uid_t kNobody = 65534;

/// Debian keeps the programs of each version apart, and none in PATH.
fs::path programFolder() {
    const fs::path versions = "/usr/lib/postgresql";
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(versions, error)) {
        if (fs::exists(entry.path() / "bin" / "initdb")) return entry.path() / "bin";
    }
    throw std::runtime_error("no program initdb: install the package postgresql");
}

/// Processes of a server that is frozen with it.
std::vector<pid_t> familyOf(pid_t server) {
    std::vector<pid_t> family = {server};
    std::ifstream children("/proc/" + std::to_string(server) + "/task/" + std::to_string(server) +
                           "/children");
    for (pid_t child = 0; children >> child;)
        family.push_back(child);
    return family;
}

} // namespace

PostgresServer::PostgresServer(Writes writes) : m_programs(programFolder()), m_writes(writes) {
    if (geteuid() == 0 && chown(m_folder.path().c_str(), kNobody, kNobody) != 0)
        throw std::runtime_error("chown");
    ChildProcess making =
        run("initdb", {"--no-sync", "--no-instructions", "--auth=trust", "--username=vorq",
                       "--encoding=UTF8", "--locale=C", "--pgdata=" + dataFolder().string()});
    making.readAll();
    const std::string complaint = making.readErrors();
    if (making.wait() != 0) throw std::runtime_error("initdb: " + complaint);
    start();
}

PostgresServer::~PostgresServer() {
    thaw();
    stop();
}

PostgresServer& PostgresServer::shared() {
    static PostgresServer server;
    return server;
}

ChildProcess PostgresServer::run(const std::string& program,
                                 std::vector<std::string> arguments) const {
    std::vector<std::string> all = {"--pdeathsig", "INT"};
    if (geteuid() == 0) {
        const std::string nobody = std::to_string(kNobody);
        all.insert(all.end(), {"--reuid", nobody, "--regid", nobody, "--clear-groups"});
    }
    all.push_back((m_programs / program).string());
    all.insert(all.end(), arguments.begin(), arguments.end());
    return ChildProcess("/usr/bin/setpriv", std::move(all),
                        {{"LC_ALL", "C"}, {"TZ", "UTC"}, {"HOME", m_folder.path().string()}});
}

std::string PostgresServer::addressOf(const std::string& database) const {
    std::string folder = m_folder.path().string();
    for (std::size_t at = folder.find('/'); at != std::string::npos; at = folder.find('/'))
        folder.replace(at, 1, "%2F");
    return "postgresql://vorq@" + folder + "/" + database;
}

std::string PostgresServer::freshAddress() {
    const std::string schema = "test" + std::to_string(++m_schemas);
    administer("CREATE SCHEMA " + schema);
    return addressOf("postgres") + "?options=-csearch_path%3D" + schema;
}

std::string PostgresServer::freshDatabase() {
    const std::string name = "database" + std::to_string(++m_schemas);
    administer("CREATE DATABASE " + name);
    return addressOf(name);
}

void PostgresServer::administer(const std::string& sql) const {
    PostgresClient(addressOf("postgres") + "?target_session_attrs=any").query(sql);
}

fs::path PostgresServer::dataFolder() const {
    return m_folder.path() / "data";
}

void PostgresServer::stop() {
    if (!m_process) return;
    m_process->signal(SIGINT);
    m_process->wait();
    m_process.reset();
}

void PostgresServer::start() {
    // What a test stores need not outlast the computer.
    const std::string fsync = m_writes == Writes::ToTheDisk ? "fsync=on" : "fsync=off";
    m_process.emplace(
        run("postgres", {"-D", dataFolder().string(), "-k", m_folder.path().string(), "-c",
                         "listen_addresses=", "-c", fsync, "-c", "logging_collector=off", "-c",
                         "log_min_messages=fatal", "-c", "shared_buffers=16MB"}));
    awaitReady();
}

void PostgresServer::awaitReady() const {
    const auto end = std::chrono::steady_clock::now() + 60s;
    while (true) {
        try {
            const PostgresClient client(addressOf("postgres"));
            return;
        } catch (const DatabaseError& error) {
            if (std::chrono::steady_clock::now() > end) throw;
        }
        std::this_thread::sleep_for(20ms);
    }
}

void PostgresServer::freeze() const {
    for (const pid_t process : familyOf(m_process->pid()))
        kill(process, SIGSTOP);
}

void PostgresServer::thaw() const {
    if (!m_process) return;
    for (const pid_t process : familyOf(m_process->pid()))
        kill(process, SIGCONT);
}

} // namespace vorq::gateway::testing
