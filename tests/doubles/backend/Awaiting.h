#pragma once

#include "backend/http/Errors.h"
#include "doubles/async/TurnUntil.h"

#include <QCoroTask>

#include <chrono>
#include <memory>
#include <optional>
#include <type_traits>
#include <variant>

namespace vorq {

/// Follows a task from outside: whether it has ended, and with what.
template<typename T>
class Outcome {
  public:
    using Value = std::conditional_t<std::is_void_v<T>, std::monostate, T>;

    explicit Outcome(QCoro::Task<T> task) : m_state(std::make_shared<State>()) {
        follow(std::move(task), m_state);
    }

    [[nodiscard]] bool ended() const { return m_state->ended; }
    [[nodiscard]] bool succeeded() const { return m_state->value.has_value(); }
    [[nodiscard]] const Value& value() const { return m_state->value.value(); }
    [[nodiscard]] bool cancelled() const { return holds<OperationCancelled>(); }
    /// The message of what was thrown; empty if nothing was.
    [[nodiscard]] QString message() const {
        try {
            if (m_state->thrown) std::rethrow_exception(m_state->thrown);
        } catch (const BackendError& error) {
            return error.message();
        }
        return {};
    }
    [[nodiscard]] std::optional<ServiceError::Kind> serviceError() const {
        try {
            if (m_state->thrown) std::rethrow_exception(m_state->thrown);
        } catch (const ServiceError& error) {
            return error.kind();
        } catch (...) {
            return std::nullopt;
        }
        return std::nullopt;
    }
    template<typename Error>
    [[nodiscard]] bool holds() const {
        try {
            if (m_state->thrown) std::rethrow_exception(m_state->thrown);
        } catch (const Error&) {
            return true;
        } catch (...) {
            return false;
        }
        return false;
    }

    /// Turns the event loop until the task has ended.
    bool wait(std::chrono::milliseconds limit = std::chrono::seconds(30)) const {
        return turnUntil([this] { return ended(); }, limit);
    }

  private:
    struct State {
        bool ended = false;
        std::optional<Value> value;
        std::exception_ptr thrown;
    };

    static QCoro::Task<> follow(QCoro::Task<T> task, std::shared_ptr<State> state) {
        try {
            if constexpr (std::is_void_v<T>) {
                co_await task;
                state->value.emplace();
            } else {
                state->value.emplace(co_await task);
            }
        } catch (...) {
            state->thrown = std::current_exception();
        }
        state->ended = true;
    }

    std::shared_ptr<State> m_state;
};

template<typename T>
Outcome(QCoro::Task<T>) -> Outcome<T>;

} // namespace vorq
