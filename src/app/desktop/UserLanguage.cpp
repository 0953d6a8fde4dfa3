#include "app/desktop/UserLanguage.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>

namespace vorq {
namespace {

bool isLanguageOfSources(const QString& language) {
    return language == u"C" || language == u"en" || language.startsWith(u"en-");
}

} // namespace

UserLanguage::UserLanguage(const QString& resources)
    : UserLanguage(resources, QLocale::system().uiLanguages()) {}

UserLanguage::UserLanguage(const QString& resources, const QStringList& languages) {
    for (const QString& language : languages)
        if (isLanguageOfSources(language) || load(resources + "/translations", language)) return;
}

// Of the toolkit's nothing is used without ours, or dialogs would mix two languages.
bool UserLanguage::load(const QString& folder, const QString& language) {
    const QString suffix = QString(language).replace(u'-', u'_');
    if (!m_own.load("vorq_" + suffix, folder)) return false;
    QCoreApplication::installTranslator(&m_own);
    if (m_toolkit.load("qtbase_" + suffix, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&m_toolkit);
    return true;
}

} // namespace vorq
