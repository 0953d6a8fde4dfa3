#pragma once

#include "platform/PortSupport.h"

#include <QCoroTask>
#include <QStringList>

#include <stop_token>

namespace vorq {

/// Where the user lets programs read others. Main thread only; nothing waits.
class PrivacySettings {
  public:
    PrivacySettings() = default;
    PrivacySettings(const PrivacySettings&) = delete;
    PrivacySettings& operator=(const PrivacySettings&) = delete;
    virtual ~PrivacySettings() = default;

    /// Whether reading others can be allowed here at all, and why not.
    [[nodiscard]] virtual PortSupport supported() const { return {}; }

    /// Opens the settings of that name, or does at once what the user would do there: they have
    /// agreed. The outcome shows in what is allowed from then on.
    virtual void openPrivacyPane(const QString& anchor) = 0;

    /// The names of the running programs that show their windows to nobody but would after a new
    /// start, each once, for people.
    virtual QCoro::Task<QStringList> programsToRestart(std::stop_token stop) = 0;
};

/// Nothing is allowed, and nothing can be.
class NoPrivacySettings final : public PrivacySettings {
  public:
    [[nodiscard]] PortSupport supported() const override {
        return std::unexpected(QStringLiteral("There is no desktop whose programs can be read."));
    }
    void openPrivacyPane(const QString&) override {}
    QCoro::Task<QStringList> programsToRestart(std::stop_token) override {
        co_return QStringList();
    }
};

} // namespace vorq
