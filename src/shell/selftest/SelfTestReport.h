#pragma once

#include "shell/selftest/SelfCheck.h"

#include <QByteArray>

#include <optional>

namespace vorq {

class PrivateWords;

/// A result as it goes from the Vorq that tests to the command that shows it: plain, without
/// private words but in the details.
struct ReportedCheck {
    QString id;
    SelfCheckState state = SelfCheckState::Ok;
    QString sentence;
    QString advice;
    QStringList details;

    bool operator==(const ReportedCheck&) const = default;
};

[[nodiscard]] ReportedCheck reported(const SelfCheck& check, const PrivateWords& secrets);

/// One JSON object each.
[[nodiscard]] QByteArray encode(const ReportedCheck& check);
/// Nothing for what is none.
[[nodiscard]] std::optional<ReportedCheck> decodeReportedCheck(const QByteArray& json);

/// What a report says beside the checks.
struct ReportHead {
    QString version;
    /// Whether the Vorq that runs was tested, or a process of the command alone.
    bool isOfRunningProgram = false;
};

/// The whole test as one JSON document for bug reports, as docs/self-test.md tells. The details are
/// left out.
[[nodiscard]] QByteArray reportDocument(const ReportHead& head, const QList<ReportedCheck>& checks);

} // namespace vorq
