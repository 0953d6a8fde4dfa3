#pragma once

#include "backend/account/VorqSessionStore.h"
#include "backend/api/Session.h"
#include "backend/http/Errors.h"
#include "platform/Clock.h"
#include "support/files/FolderLock.h"

#include <functional>
#include <memory>
#include <optional>

namespace vorq {

class VorqAPIService;

/// Trades the stored refresh token for new tokens, one program of the user at a time: a refresh
/// token is good for one call, so reading it, the call and storing what comes back happen under one
/// lock. A program that comes second finds the tokens of the first and makes no call.
///
/// Destroying it stops what is under way. Main thread only.
class SessionRefresh {
  public:
    struct Outcome {
        enum class Kind {
            Renewed, ///< by this program
            Adopted, ///< stored by another program
            Refused, ///< there is no session to be had any more
            Failed,  ///< for now; the session stays
            Dropped, ///< stopped, or of a session that was left
        };
        Kind kind = Kind::Dropped;
        std::optional<ServiceError> failure; ///< of Failed

        [[nodiscard]] bool hasTokens() const {
            return kind == Kind::Renewed || kind == Kind::Adopted;
        }
    };
    /// What is stored now, and the response if it came from this program.
    using OnTokens =
        std::function<void(const VorqSessionStore::Record&, const std::optional<Session>&)>;

    /// Calls back before anybody who waits goes on. The references outlive the object.
    SessionRefresh(VorqAPIService& api, VorqSessionStore& store, Clock& clock, OnTokens onTokens);
    SessionRefresh(const SessionRefresh&) = delete;
    SessionRefresh& operator=(const SessionRefresh&) = delete;
    ~SessionRefresh();

    /// A call while another is under way shares its outcome. `heldToken` is the access token that
    /// is to be replaced. Stopping ends the wait only, with Dropped.
    QCoro::Task<Outcome> run(QString heldToken, std::stop_token stop);
    /// Waits until no call of the backend is under way.
    QCoro::Task<> settled(std::stop_token stop);
    /// The session was left: what is under way ends as Dropped.
    void leave();

  private:
    struct Round;
    struct Answer {
        std::optional<Session> session;
        std::optional<ServiceError> error;
    };

    static QCoro::Task<> drive(SessionRefresh* self, std::shared_ptr<Round> round,
                               QString heldToken, std::stop_token stop);
    static QCoro::Task<Outcome> attempt(SessionRefresh* self, std::shared_ptr<Round> round,
                                        QString heldToken, std::stop_token stop);
    static QCoro::Task<std::optional<FolderLock>> lock(SessionRefresh* self, std::stop_token stop);
    static QCoro::Task<Answer> ask(SessionRefresh* self, std::shared_ptr<Round> round,
                                   QString refreshToken, std::stop_token stop);
    [[nodiscard]] Outcome keep(const Session& session, const VorqSessionStore::Record& stored);
    [[nodiscard]] Outcome adoptReplacement(const QString& formerToken);

    VorqAPIService& m_api;
    VorqSessionStore& m_store;
    Clock& m_clock;
    OnTokens m_onTokens;
    std::shared_ptr<Round> m_round;
    std::stop_source m_stop;
};

} // namespace vorq
