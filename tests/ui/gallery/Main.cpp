// The kit of controls for looking at: vorq-gallery, or vorq-gallery --shots FOLDER [PAGE …] for
// pictures of its pages in both themes, and of the dark one large, in high contrast and from right
// to left.

#include "ui/gallery/GalleryView.h"

#include <QApplication>
#include <QDir>

#include <cstdio>
#include <functional>

using namespace Qt::StringLiterals;

// Generated with the module; named here so that the linker keeps it.
void qml_register_types_Vorq_Gallery();

namespace vorq {
namespace {

struct Variant {
    const char* name;
    std::function<void(PanelStage&, GalleryView&)> prepare;
};

const QList<Variant>& variants() {
    static const QList<Variant> list{
        {"dark", [](PanelStage&, GalleryView&) {}},
        {"light", [](PanelStage&, GalleryView& view) { view.setDark(false); }},
        {"large",
         [](PanelStage& stage, GalleryView& view) {
             stage.look->setTextScale(2);
             view.resize(2 * view.size());
         }},
        {"contrast", [](PanelStage& stage,
                        GalleryView&) { stage.look->setDesktop({.wantsHighContrast = true}); }},
        {"mirrored",
         [](PanelStage&, GalleryView&) { QGuiApplication::setLayoutDirection(Qt::RightToLeft); }},
    };
    return list;
}

void shootPages(const Variant& variant, const QDir& folder, const QStringList& wanted) {
    PanelStage stage;
    GalleryView view(stage);
    variant.prepare(stage, view);
    view.show();
    view.requestActivate();
    for (int page = 0; page < view.pageCount(); ++page) {
        view.setPage(page);
        if (!wanted.isEmpty() && !wanted.contains(view.pageName())) continue;
        const QString name =
            u"gallery-%1-%2.png"_s.arg(view.pageName().toLower(), QLatin1StringView(variant.name));
        if (!view.picture().save(folder.filePath(name)))
            qFatal("cannot write %s", qPrintable(name));
        std::printf("%s\n", qPrintable(name));
    }
}

int shoot(const QString& path, const QStringList& pages) {
    const QDir folder(path);
    folder.mkpath(u"."_s);
    for (const Variant& variant : variants())
        shootPages(variant, folder, pages);
    return 0;
}

} // namespace
} // namespace vorq

int main(int argc, char** argv) {
    const bool shoots = argc >= 3 && qstrcmp(argv[1], "--shots") == 0;
    qputenv("QT_QUICK_BACKEND", "software");
    if (shoots && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    vorq::prepareUi();
    qml_register_types_Vorq_Gallery();
    if (shoots)
        return vorq::shoot(QString::fromLocal8Bit(argv[2]), QApplication::arguments().mid(3));
    vorq::PanelStage stage;
    vorq::GalleryView view(stage);
    view.show();
    view.setPage(0);
    return QApplication::exec();
}
