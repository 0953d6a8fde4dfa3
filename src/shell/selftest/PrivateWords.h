#pragma once

#include <QString>
#include <QStringList>

namespace vorq {

class AccountSession;

/// The words that must not leave the machine in a report, and paths that may hold them.
class PrivateWords {
  public:
    /// A name, an address, a token; what is blank, or a single character, is no secret.
    void add(const QString& word);

    /// The text with each of the words, and each absolute path, made "…". A word is found where it
    /// stands alone, in whatever case.
    [[nodiscard]] QString without(const QString& text) const;

  private:
    QStringList m_words; // the longest first
};

/// What a report must not tell of who is signed in, or was, and of their home folder.
[[nodiscard]] PrivateWords wordsOf(const AccountSession& account, const QString& home);

} // namespace vorq
