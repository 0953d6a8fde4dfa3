#pragma once

#include <QQuickWindow>
#include <QString>
#include <QStringList>
#include <QTranslator>

#include <string>

namespace vorq {

/// Has texts translated into the language of tests as long as it lives.
class TestLanguage {
  public:
    TestLanguage();

    /// Whether all of a text is in that language, which has no plain vowel. What never changes is
    /// let pass: the program's name and what is typed as a command.
    [[nodiscard]] static bool has(QString text);
    /// Those that it does not have all of, one a line.
    [[nodiscard]] static std::string foreign(const QStringList& texts);

  private:
    QTranslator m_translator;
};

/// All that a window shows or tells a screen reader, tips included.
[[nodiscard]] QStringList shownTexts(QQuickWindow& window);

/// The visible texts that do not fit into their place, one a line, each with why.
[[nodiscard]] std::string cutTexts(QQuickWindow& window);

/// The visible texts of a page that lie over each other, one pair a line.
[[nodiscard]] std::string overlappingTexts(QQuickWindow& window);

} // namespace vorq
