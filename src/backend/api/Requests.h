#pragma once

#include <QByteArray>
#include <QString>

#include <chrono>
#include <optional>
#include <vector>

namespace vorq {

/// A message of the conversation so far, as it travels with a prompt.
struct RecentMessage {
    QString role;
    QString content;

    bool operator==(const RecentMessage&) const = default;
};

/// Body of "/ai/prompt". Empty lists and blank models are left out.
struct PromptRequest {
    static constexpr QStringView path = u"/ai/prompt";

    QString prompt;
    QString selectedText;
    QString screenDataUrl;
    bool deepResearch = false;
    bool skipUserPreferences = false;
    bool forceLearn = false;
    /// Whether the reply comes as a stream; a prompt without says nothing about it.
    bool stream = false;
    std::vector<RecentMessage> recentMessages;
    std::optional<QString> preferredModel;

    [[nodiscard]] std::chrono::seconds timeout() const;

    bool operator==(const PromptRequest&) const = default;
};

/// Body of "/ai/analyze", whose reply is always a stream.
struct AnalyzeRequest {
    static constexpr QStringView path = u"/ai/analyze";
    static constexpr std::chrono::seconds timeout{60};

    QString text;
    std::optional<QString> preferredModel;

    bool operator==(const AnalyzeRequest&) const = default;
};

[[nodiscard]] QByteArray encode(const PromptRequest& request);
[[nodiscard]] QByteArray encode(const AnalyzeRequest& request);

} // namespace vorq
