#include "capture/selection/CaptureMiss.h"

#include <QCoreApplication>

namespace vorq {
namespace {

struct Sentences {
    Q_DECLARE_TR_FUNCTIONS(vorq::CaptureMiss)
};

QString pattern(CaptureMiss miss) {
    switch (miss) {
    case CaptureMiss::NothingHighlighted:
        return Sentences::tr("Nothing was found highlighted in %1.");
    case CaptureMiss::NoAnswer:
        return Sentences::tr("Nothing was read from %1, which does not answer.");
    case CaptureMiss::Excluded:
        return Sentences::tr("Nothing was read from %1, which is excluded.");
    case CaptureMiss::Password:
        return Sentences::tr("Nothing was read from %1, where a field for passwords has the "
                             "keyboard.");
    }
    return {};
}

} // namespace

QString sentenceOf(CaptureMiss miss, const QString& application) {
    const QString named =
        application.isEmpty() ? Sentences::tr("the application in front") : application;
    return pattern(miss).arg(named);
}

} // namespace vorq
