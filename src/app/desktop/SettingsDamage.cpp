#include "app/desktop/SettingsDamage.h"

#include "capture/source/ExcludedApplications.h"
#include "panel/PanelConversation.h"
#include "platform/Defaults.h"

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

QString listSentence() {
    return u"Vorq cannot tell from which applications it must not capture, so it "
           "captures from none. Put the list into the settings again, as "
           "\"%1\": []."_s.arg(ExcludedApplications::key);
}

// Later, as damage is found wherever settings are asked for.
void say(PanelConversation& panel, const QString& sentence) {
    QMetaObject::invokeMethod(
        &panel, [&panel, sentence] { panel.answer(sentence); }, Qt::QueuedConnection);
}

} // namespace

SettingsDamage::SettingsDamage(Defaults& settings, PanelConversation& panel)
    : m_settings(settings) {
    settings.setDamageHandler([&panel](const QString& sentence) { say(panel, sentence); });
    if (ExcludedApplications(settings).areUnknown()) say(panel, listSentence());
}

SettingsDamage::~SettingsDamage() {
    m_settings.setDamageHandler({});
}

} // namespace vorq
