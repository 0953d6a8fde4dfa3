#pragma once

#include "support/RawNames.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <cstdint>

namespace vorq {

/// A text of the self-test. A terminal and a report show it as it stands in the source, a window in
/// the user's language.
struct SelfTestText {
    /// Marked with QT_TRANSLATE_NOOP("SelfTest", …); null for none.
    const char* source = nullptr;
    /// For %1 and so on. Nothing of the user's may be among them.
    QStringList arguments = {};

    [[nodiscard]] bool isEmpty() const { return source == nullptr; }
    [[nodiscard]] QString plain() const;
    [[nodiscard]] QString translated() const;
};

enum class SelfCheckState : std::uint8_t {
    Ok,
    Warning, ///< Vorq works, with less than it could
    Failed,
    Skipped, ///< the sentence says why
};

constexpr auto selfCheckStates = rawNames<SelfCheckState>({{SelfCheckState::Ok, "ok"},
                                                           {SelfCheckState::Warning, "warning"},
                                                           {SelfCheckState::Failed, "failed"},
                                                           {SelfCheckState::Skipped, "skipped"}});

/// What came of one check.
struct SelfCheck {
    /// Stays the same from release to release.
    QString id;
    SelfCheckState state = SelfCheckState::Ok;
    SelfTestText sentence;
    /// What the user can do; none where nothing is amiss.
    SelfTestText advice = {};
    /// More for the eyes of the user alone, such as names of programs: never in a report.
    QStringList details = {};
};

} // namespace vorq
