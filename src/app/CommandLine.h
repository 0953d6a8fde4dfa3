#pragma once

#include <QString>
#include <QStringList>

#include <variant>

namespace vorq {

struct AskArguments {
    QString prompt; ///< "" when only the piped text is to be analysed
    QStringList files;
    QString model; ///< "" for the user's own choice
    bool operator==(const AskArguments&) const = default;
};

struct OpenArguments {
    QString url;
    bool operator==(const OpenArguments&) const = default;
};

struct ShowText {
    QString text; ///< for standard output
    bool operator==(const ShowText&) const = default;
};

struct UsageError {
    QString message;
    bool operator==(const UsageError&) const = default;
};

using Command = std::variant<AskArguments, OpenArguments, ShowText, UsageError>;

/// What the arguments, without the program's name, ask for.
[[nodiscard]] Command parseCommandLine(const QStringList& arguments);

} // namespace vorq
