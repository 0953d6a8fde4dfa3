// Draws the pages of the settings into pictures for looking at:
// vorq-settings-shot FOLDER [TEXT_SCALE [CATALOGUE]]
// QT_SCALE_FACTOR draws them larger, and a catalogue of texts in its language.

#include "doubles/ui/SettingsStage.h"

#include <QBuffer>
#include <QDir>
#include <QGuiApplication>
#include <QPainter>
#include <QTranslator>

#include <cstdio>
#include <functional>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

using Pane = SettingsNavigation::SettingsPane;

struct Shot {
    QString name;
    std::function<void(SettingsStage&)> act;
    QSize size{1120, 860};
};

QByteArray portrait() {
    QImage image(512, 512, QImage::Format_RGB32);
    image.fill(QColor("#7FB8A4"));
    QPainter painter(&image);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor("#F4D8B8"));
    painter.drawEllipse(QPoint(256, 210), 110, 130);
    painter.setBrush(QColor("#2B3F57"));
    painter.drawEllipse(QPoint(256, 560), 220, 200);
    painter.end();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "JPEG");
    return bytes;
}

void choosePortrait(SettingsStage& stage) {
    stage.tools->avatar = portrait();
    (void)stage.base.state->account().keepProfileImage(portrait());
    stage.settle(400);
}

void colour(SettingsStage& stage) {
    stage.base.state->appearance().setPanelUserBlockHex(u"#1F6F63"_s);
    stage.base.state->appearance().setPanelAssistantBlockHex(u"#FFD2A1"_s);
}

void refusePrivacy(SettingsStage& stage) {
    stage.open(Pane::Privacy);
    stage.settings->privacy()->setCurrentPassword(u"secret"_s);
    stage.settings->privacy()->setNewPassword(u"short"_s);
    stage.settings->privacy()->setConfirmPassword(u"short"_s);
    stage.settings->privacy()->save();
    stage.settle();
}

void saveProfile(SettingsStage& stage) {
    stage.open(Pane::Profile);
    stage.settings->profile()->setFirstName(u"Miranda"_s);
    stage.settings->profile()->save();
    stage.settle();
}

void welcomePicture(SettingsStage& stage) {
    stage.open(Pane::Profile);
    stage.find(u"ProfilePicture"_s).setProperty("isWelcoming", true);
}

void openHub(SettingsStage& stage) {
    (void)stage.base.state->previews().set(Preview::Hub, true);
    stage.settle();
}

const QList<Shot>& shots() {
    static const QList<Shot> all = {
        {u"list"_s, [](SettingsStage&) {}},
        {u"list-small"_s, [](SettingsStage&) {}, {460, 640}},
        {u"signed-out"_s, [](SettingsStage& stage) { stage.base.state->account().signOut(); }},
        {u"profile"_s, [](SettingsStage& stage) { stage.open(Pane::Profile); }},
        {u"profile-portrait"_s,
         [](SettingsStage& stage) {
             choosePortrait(stage);
             saveProfile(stage);
         }},
        {u"profile-drop"_s, welcomePicture},
        {u"profile-discard"_s,
         [](SettingsStage& stage) {
             stage.open(Pane::Profile);
             stage.settings->profile()->setFirstName(u"Miranda"_s);
             stage.settings->navigation()->back();
             stage.settle(400);
         }},
        {u"privacy"_s, [](SettingsStage& stage) { stage.open(Pane::Privacy); }},
        {u"privacy-refused"_s, refusePrivacy},
        {u"appearance"_s, [](SettingsStage& stage) { stage.open(Pane::Appearance); }},
        {u"panel-look"_s, [](SettingsStage& stage) { stage.open(Pane::PanelLook); }},
        {u"customize"_s,
         [](SettingsStage& stage) {
             colour(stage);
             stage.open(Pane::CustomizePanel);
         }},
        {u"customize-small"_s,
         [](SettingsStage& stage) { stage.open(Pane::CustomizePanel); },
         {600, 1240}},
        {u"customize-reset"_s,
         [](SettingsStage& stage) {
             colour(stage);
             stage.open(Pane::CustomizePanel);
             stage.settings->appearance()->resetColors();
             stage.settle(400);
         }},
        {u"hub-list"_s, openHub},
        {u"hub-page"_s,
         [](SettingsStage& stage) {
             openHub(stage);
             stage.settings->navigation()->showHub(u"tasks"_s);
             stage.settle();
         }},
        {u"hub-folded"_s,
         [](SettingsStage& stage) {
             openHub(stage);
             stage.settings->navigation()->setHubTapeExpanded(false);
             stage.open(Pane::CustomizePanel);
         }},
    };
    return all;
}

void draw(const QString& folder, const Shot& shot, bool isDark, double textScale) {
    SettingsStage stage;
    stage.setDark(isDark);
    for (PanelLook* look : {stage.look.get(), stage.settings->panelLook()})
        look->setTextScale(textScale);
    stage.show(shot.size);
    shot.act(stage);
    stage.settle(400);
    const QString name = u"%1/%2-%3.png"_s.arg(folder, shot.name, isDark ? u"dark"_s : u"light"_s);
    stage.window->grabWindow().save(name);
    std::puts(qPrintable(name));
}

} // namespace
} // namespace vorq

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    QTranslator texts;
    const bool hasTexts = arguments.size() < 4 || texts.load(arguments[3]);
    if (arguments.size() < 2 || !hasTexts) {
        std::fputs("usage: vorq-settings-shot FOLDER [TEXT_SCALE [CATALOGUE]]\n", stderr);
        return 2;
    }
    if (!texts.isEmpty()) QCoreApplication::installTranslator(&texts);
    const double textScale = arguments.size() < 3 ? 1 : arguments[2].toDouble();
    vorq::prepareUi();
    QDir().mkpath(arguments[1]);
    for (const vorq::Shot& shot : vorq::shots())
        for (const bool isDark : {true, false})
            vorq::draw(arguments[1], shot, isDark, textScale);
    return 0;
}
