#include "doubles/gateway/ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <stdexcept>

extern char** environ;

namespace vorq::gateway::testing {
namespace {

/// Empty at the end or after twenty seconds of silence.
std::string readSome(int descriptor, std::size_t most) {
    pollfd wait{.fd = descriptor, .events = POLLIN, .revents = 0};
    if (poll(&wait, 1, 20'000) <= 0) return {};
    std::string buffer(most, '\0');
    const ssize_t count = read(descriptor, buffer.data(), most);
    buffer.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    return buffer;
}

std::string readToEnd(int descriptor) {
    std::string all;
    for (std::string piece = readSome(descriptor, 4096); !piece.empty();
         piece = readSome(descriptor, 4096)) {
        all += piece;
    }
    return all;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

std::vector<std::string>
environmentWith(const std::vector<std::pair<std::string, std::string>>& changes) {
    std::vector<std::string> variables;
    for (char** entry = environ; *entry != nullptr; ++entry) {
        const std::string variable = *entry;
        bool changed = variable.starts_with("VORQ_") || variable.starts_with("XDG_");
        for (const auto& [name, value] : changes) {
            changed = changed || variable.starts_with(name + "=");
        }
        if (!changed) variables.push_back(variable);
    }
    for (const auto& [name, value] : changes)
        variables.push_back(name + "=" + value);
    return variables;
}

} // namespace

ChildProcess::ChildProcess(const std::string& program, std::vector<std::string> arguments,
                           const std::vector<std::pair<std::string, std::string>>& environment) {
    std::array<int, 2> out{};
    std::array<int, 2> err{};
    if (pipe2(out.data(), O_CLOEXEC) != 0 || pipe2(err.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("pipe");
    }
    arguments.insert(arguments.begin(), program);
    std::vector<std::string> variables = environmentWith(environment);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
    posix_spawn_file_actions_adddup2(&actions, err[1], STDERR_FILENO);
    const int result = posix_spawn(&m_pid, program.c_str(), &actions, nullptr,
                                   pointersTo(arguments).data(), pointersTo(variables).data());
    posix_spawn_file_actions_destroy(&actions);
    close(out[1]);
    close(err[1]);
    m_output = out[0];
    m_errors = err[0];
    if (result != 0) throw std::runtime_error("posix_spawn");
}

ChildProcess::ChildProcess(ChildProcess&& other) noexcept
    : m_pid(std::exchange(other.m_pid, -1)),
      m_output(std::exchange(other.m_output, -1)),
      m_errors(std::exchange(other.m_errors, -1)) {}

ChildProcess::~ChildProcess() {
    if (m_pid > 0) {
        kill(m_pid, SIGKILL);
        waitpid(m_pid, nullptr, 0);
    }
    for (const int descriptor : {m_output, m_errors}) {
        if (descriptor >= 0) close(descriptor);
    }
}

std::string ChildProcess::readLine() {
    std::string line;
    for (std::string next = readSome(m_output, 1); !next.empty() && next != "\n";
         next = readSome(m_output, 1)) {
        line += next;
    }
    return line;
}

std::string ChildProcess::readAll() {
    return readToEnd(m_output);
}

std::string ChildProcess::readErrors() {
    return readToEnd(m_errors);
}

void ChildProcess::signal(int number) const {
    if (m_pid > 0) kill(m_pid, number);
}

int ChildProcess::wait() {
    int status = 0;
    waitpid(m_pid, &status, 0);
    m_pid = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

} // namespace vorq::gateway::testing
