#pragma once

#include "capture/copy/PasteOver.h"

namespace vorq {

/// Writes over a selection in another application, once it has seen that it is still there. A
/// replacement that is under way goes on when whoever asked is gone.
class SelectionReplacer {
  public:
    using Outcome = PasteOver::Outcome;
    using Target = PasteOver::Target;

    SelectionReplacer() = default;
    SelectionReplacer(const SelectionReplacer&) = delete;
    SelectionReplacer& operator=(const SelectionReplacer&) = delete;
    virtual ~SelectionReplacer() = default;

    virtual QCoro::Task<Outcome> replaceSelectedText(QString replacement, Target target,
                                                     std::stop_token stop) = 0;
};

/// Over a paste, which must outlive it.
class PasteOverReplacer final : public SelectionReplacer {
  public:
    explicit PasteOverReplacer(PasteOver& paster) : m_paster(paster) {}

    QCoro::Task<Outcome> replaceSelectedText(QString replacement, Target target,
                                             std::stop_token stop) override {
        return m_paster.replaceSelectedText(std::move(replacement), std::move(target),
                                            std::move(stop));
    }

  private:
    PasteOver& m_paster;
};

/// Replaces nothing.
class NoSelectionReplacer final : public SelectionReplacer {
  public:
    QCoro::Task<Outcome> replaceSelectedText(QString, Target, std::stop_token) override {
        co_return Outcome::NotReplaced;
    }
};

} // namespace vorq
