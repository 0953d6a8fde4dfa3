#include "app/desktop/PreviewCommand.h"

#include "app/cli/Terminal.h"
#include "app/instance/Courier.h"
#include "areas/Previews.h"
#include "platform/DesktopPlatform.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

int failPreview(const QString& sentence) {
    Terminal().complain(sentence);
    return 1;
}

int tellSwitch(const SwitchPreview& command, const std::expected<void, QString>& outcome) {
    if (!outcome) return failPreview(outcome.error());
    const QString said = u"%1 is %2.\n"_s.arg(previewNames.nameOf(command.preview),
                                              command.isOn ? u"on"_s : u"off"_s);
    return Terminal().print(said.toUtf8()) ? 0 : 1;
}

int printPreviews(const QList<Preview>& open) {
    qsizetype widest = 0;
    for (const Preview preview : allPreviews)
        widest = std::max(widest, previewNames.nameOf(preview).size());
    QString lines;
    for (const Preview preview : allPreviews)
        lines += u"%1  %2  %3\n"_s.arg(previewNames.nameOf(preview).leftJustified(widest),
                                       open.contains(preview) ? u"on "_s : u"off"_s,
                                       sentenceOn(preview));
    return Terminal().print(lines.toUtf8()) ? 0 : 1;
}

} // namespace

std::optional<int> switchPreviewOfRunningInstance(const SwitchPreview& command) {
    Courier courier;
    if (!courier.instance().exists()) return std::nullopt;
    return tellSwitch(command, courier.instance().switchPreview(command));
}

std::optional<int> listPreviewsOfRunningInstance() {
    Courier courier;
    if (!courier.instance().exists()) return std::nullopt;
    const auto open = courier.instance().openPreviews();
    return open ? printPreviews(*open) : failPreview(open.error());
}

int switchStoredPreview(DesktopPlatform& platform, const SwitchPreview& command) {
    return tellSwitch(command, Previews(platform.defaults()).set(command.preview, command.isOn));
}

int listStoredPreviews(DesktopPlatform& platform) {
    const Previews previews(platform.defaults());
    QList<Preview> open;
    for (const Preview preview : allPreviews)
        if (previews.isOn(preview)) open += preview;
    return printPreviews(open);
}

} // namespace vorq
