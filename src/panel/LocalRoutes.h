#pragma once

#include <QStringView>

namespace vorq {

/// The prompts that the program carries out by itself instead of asking the backend.
class LocalRoutes {
  public:
    LocalRoutes() = default;
    LocalRoutes(const LocalRoutes&) = delete;
    LocalRoutes& operator=(const LocalRoutes&) = delete;
    virtual ~LocalRoutes() = default;

    /// Carries out the prompt, answering in the conversation, or gives false for one that is none
    /// of its own.
    virtual bool take(QStringView prompt) = 0;
};

} // namespace vorq
