#pragma once

#include <string>
#include <utility>
#include <vector>

#include <sys/types.h>

namespace vorq::gateway::testing {

/// A running program whose output is read. Killed when it is not needed any more.
class ChildProcess {
  public:
    /// `environment` is laid over this process's own.
    ChildProcess(const std::string& program, std::vector<std::string> arguments,
                 const std::vector<std::pair<std::string, std::string>>& environment);
    ~ChildProcess();
    ChildProcess(ChildProcess&& other) noexcept;
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ChildProcess& operator=(ChildProcess&&) = delete;

    /// One line of standard output, without its end; empty after twenty seconds of silence.
    std::string readLine();
    /// All that is left of standard output or standard error, until the program closes it.
    std::string readAll();
    std::string readErrors();
    void signal(int number) const;
    [[nodiscard]] pid_t pid() const { return m_pid; }
    /// The exit status, or 128 and the number of the signal that ended it.
    int wait();

  private:
    pid_t m_pid = -1;
    int m_output = -1;
    int m_errors = -1;
};

} // namespace vorq::gateway::testing
