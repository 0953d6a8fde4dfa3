#pragma once

#include "platform/LoginItem.h"

namespace vorq {

/// A login item that only remembers what it was told.
class ScriptedLoginItem final : public LoginItem {
  public:
    QString failure; ///< "" while all goes well
    bool isRegistered = false;

    std::expected<void, QString> registerAtLogin() override { return change(true); }
    std::expected<void, QString> unregisterAtLogin() override { return change(false); }

  private:
    std::expected<void, QString> change(bool registered) {
        if (!failure.isEmpty()) return std::unexpected(failure);
        isRegistered = registered;
        return {};
    }
};

} // namespace vorq
