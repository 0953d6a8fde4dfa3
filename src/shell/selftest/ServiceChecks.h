#pragma once

#include "shell/selftest/SelfTestCheck.h"

namespace vorq {

class AccountSession;
class NotesBridge;
class VorqAPIService;

// The programs beside Vorq that do a part of its work. What the checks are given must outlive them.

/// Whether there is an application for notes. None is made.
class NotesCheck final : public SelfTestCheck {
  public:
    explicit NotesCheck(NotesBridge& notes) : m_notes(notes) {}

    [[nodiscard]] QString id() const override { return QStringLiteral("notes"); }
    QCoro::Task<SelfCheck> run(std::stop_token stop) override;

  private:
    NotesBridge& m_notes;
};

/// Whether the backend answers.
class BackendCheck final : public SelfTestCheck {
  public:
    explicit BackendCheck(VorqAPIService& api) : m_api(api) {}

    [[nodiscard]] QString id() const override { return QStringLiteral("backend"); }
    QCoro::Task<SelfCheck> run(std::stop_token stop) override;

  private:
    VorqAPIService& m_api;
};

/// Whether somebody is signed in.
class AccountCheck final : public SelfTestCheck {
  public:
    explicit AccountCheck(const AccountSession& account) : m_account(account) {}

    [[nodiscard]] QString id() const override { return QStringLiteral("account"); }
    QCoro::Task<SelfCheck> run(std::stop_token stop) override;

  private:
    const AccountSession& m_account;
};

/// Whether the language model behind the backend answers. It is asked for a word, unless the
/// backend tells that it has none.
class ProviderCheck final : public SelfTestCheck {
  public:
    ProviderCheck(VorqAPIService& api, AccountSession& account) : m_api(api), m_account(account) {}

    [[nodiscard]] QString id() const override { return QStringLiteral("provider"); }
    /// A model may have to be loaded first.
    [[nodiscard]] Clock::Duration limit() const override { return std::chrono::seconds(60); }
    QCoro::Task<SelfCheck> run(std::stop_token stop) override;

  private:
    QCoro::Task<SelfCheck> ask(std::stop_token stop);

    VorqAPIService& m_api;
    AccountSession& m_account;
};

} // namespace vorq
