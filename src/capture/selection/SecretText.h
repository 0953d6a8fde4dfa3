#pragma once

#include <QStringView>

namespace vorq {

/// Judges texts by their looks alone, for where nothing else tells that they are secrets. Such a
/// judgement errs: a password that is a plain word is not recognised, and some names of products
/// are taken for passwords. So it decides what is asked about, never what is thrown away.

/// Whether the text reads like a password, a key or a token: bullets that stand for one, a block or
/// a format known of keys, or one unbroken word that mixes letters, digits and signs as neither
/// words nor identifiers, addresses, paths, versions or dates do. White space at its ends does not
/// count.
[[nodiscard]] bool looksLikeSecret(QStringView text);

/// Whether the text is short enough, and of one line, to have been typed into a field for
/// passwords.
[[nodiscard]] bool canBePassword(QStringView text);

/// Whether the text is bullets or stars in the place of what was typed.
[[nodiscard]] bool looksMasked(QStringView text);

} // namespace vorq
