#include "backend/account/ModelCatalogue.h"
#include "support/text/Text.h"

#include <QtGlobal>

#include <algorithm>

namespace vorq {

using namespace Qt::StringLiterals;

constinit const std::array<VorqAIModelOption, 6> VorqAIModelOption::all = {{
    {u"", QLatin1StringView(QT_TRANSLATE_NOOP("VorqAIModelOption", "Auto")),
     QLatin1StringView(QT_TRANSLATE_NOOP("VorqAIModelOption", "Best model for each request"))},
    {u"openai/o3-mini", QLatin1StringView(QT_TRANSLATE_NOOP("VorqAIModelOption", "o3-mini")),
     QLatin1StringView(QT_TRANSLATE_NOOP("VorqAIModelOption", "Everyday work and reasoning"))},
    {u"perplexity/sonar-reasoning-pro",
     QLatin1StringView(QT_TRANSLATE_NOOP("VorqAIModelOption", "Sonar Reasoning Pro")),
     QLatin1StringView(QT_TRANSLATE_NOOP("VorqAIModelOption", "Current research with sources"))},
    {u"anthropic/claude-sonnet-latest",
     QLatin1StringView(QT_TRANSLATE_NOOP("VorqAIModelOption", "Claude Sonnet")),
     QLatin1StringView(QT_TRANSLATE_NOOP("VorqAIModelOption", "Natural writing and editing"))},
    {u"google/gemini-flash-latest",
     QLatin1StringView(QT_TRANSLATE_NOOP("VorqAIModelOption", "Gemini Flash")),
     QLatin1StringView(QT_TRANSLATE_NOOP("VorqAIModelOption", "Long readings and fast research"))},
    {u"deepseek/deepseek-chat",
     QLatin1StringView(QT_TRANSLATE_NOOP("VorqAIModelOption", "DeepSeek")),
     QLatin1StringView(QT_TRANSLATE_NOOP("VorqAIModelOption", "Everyday questions and chat"))},
}};

bool VorqAIModelOption::contains(QStringView id) {
    return std::ranges::find(all, id, &VorqAIModelOption::id) != all.end();
}

QString VorqAIModelOption::preferredID(const QString& useCase) {
    const QString use = trimmed(useCase).toString().toLower();
    if (use == "student"_L1) return u"openai/o3-mini"_s;
    if (use == "writer"_L1) return u"anthropic/claude-sonnet-latest"_s;
    return {};
}

std::optional<QString> modelForRequest(bool signedIn, QStringView preferredModelID) {
    const QStringView id = trimmed(preferredModelID);
    if (!signedIn || id.isEmpty()) return std::nullopt;
    return id.toString();
}

QString modelFromSession(bool userChosen, const QString& current,
                         const std::optional<QString>& preferredModel,
                         const std::optional<QString>& useCase) {
    if (userChosen) return current;
    if (preferredModel) {
        const QStringView id = trimmed(*preferredModel);
        if (VorqAIModelOption::contains(id)) return id.toString();
    }
    if (useCase && !useCase->isEmpty()) return VorqAIModelOption::preferredID(*useCase);
    return current;
}

} // namespace vorq
