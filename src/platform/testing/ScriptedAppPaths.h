#pragma once

#include "platform/AppPaths.h"

#include <QTemporaryDir>

namespace vorq {

/// Places inside a folder of its own that is removed at the end.
class ScriptedAppPaths final : public AppPaths {
  public:
    [[nodiscard]] QString home() const override { return m_folder.path(); }
    [[nodiscard]] QString executableFolder() const override { return m_folder.filePath("bin"); }
    [[nodiscard]] QString resourcesFolder() const override {
        return m_folder.filePath("share/vorq");
    }
    [[nodiscard]] QString applicationSupportFolder() const override {
        return m_folder.filePath(".local/share");
    }
    [[nodiscard]] QString settingsFolder() const override {
        return m_folder.filePath(".config/Vorq");
    }
    [[nodiscard]] QString cacheFolder() const override { return m_folder.filePath(".cache/vorq"); }

  private:
    QTemporaryDir m_folder;
};

} // namespace vorq
