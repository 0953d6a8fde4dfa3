#pragma once

#include <QString>
#include <QStringList>
#include <QTranslator>

namespace vorq {

/// Has texts translated for the user as long as it lives, our own and those of Qt's dialogs.
/// Without a catalogue of a language they want, texts stay as they are in the sources, in English.
/// To be made before anything is shown, with an application object. Main thread only.
class UserLanguage {
  public:
    /// Of the session. The folder is AppPaths::resourcesFolder().
    explicit UserLanguage(const QString& resources);
    /// Of these languages the first that there is, named as in QLocale::uiLanguages().
    UserLanguage(const QString& resources, const QStringList& languages);

  private:
    [[nodiscard]] bool load(const QString& folder, const QString& language);

    QTranslator m_own;
    QTranslator m_toolkit;
};

} // namespace vorq
