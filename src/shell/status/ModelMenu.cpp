#include "shell/status/ModelMenu.h"

#include "backend/account/ModelCatalogue.h"
#include "backend/account/PreferredModel.h"

#include <QActionGroup>
#include <QCoreApplication>
#include <QScreen>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace vorq {
namespace {

QString shown(QLatin1StringView text) {
    return QCoreApplication::translate("VorqAIModelOption", text.data());
}

} // namespace

ModelMenu::ModelMenu() : m_choices(new QActionGroup(this)) {
    setTitle(tr("Model"));
    setStyle(&m_style);
    addModels();
    connect(m_choices, &QActionGroup::triggered, this, [this](const QAction* choice) {
        if (m_model) m_model->selectPreferredAIModel(choice->data().toString());
    });
    connect(this, &QMenu::aboutToShow, this, &ModelMenu::refresh);
    refresh();
}

void ModelMenu::addModels() {
    for (const VorqAIModelOption& option : VorqAIModelOption::all)
        addModel(option.id.toString(), shown(option.title) + u'\t' + shown(option.subtitle));
}

void ModelMenu::addModel(const QString& id, const QString& text) {
    QAction* choice = m_choices->addAction(text);
    choice->setCheckable(true);
    choice->setData(id);
    addAction(choice);
}

void ModelMenu::bind(PreferredModel& model) {
    if (m_model == &model) return;
    m_model = &model;
    connect(&model, &PreferredModel::preferredAIModelIDChanged, this, &ModelMenu::refresh);
    connect(&model.offered(), &OfferedModels::changed, this, &ModelMenu::refresh);
    refresh();
}

// What stands below the catalogue.
void ModelMenu::clearOffered() {
    const QList<QAction*> all = actions();
    for (auto index = qsizetype(VorqAIModelOption::all.size()); index < all.size(); ++index) {
        removeAction(all[index]);
        m_choices->removeAction(all[index]);
        all[index]->deleteLater(); // it may be the one that was chosen just now
    }
}

// One that is no longer offered stays as long as it is the chosen one. A bar that draws the menu
// loses its place in one that is made anew.
void ModelMenu::showOffered() {
    QStringList now = m_model->offered().ids();
    now.removeIf([](const QString& id) { return VorqAIModelOption::contains(id); });
    const QString& chosen = m_model->preferredAIModelID();
    if (!VorqAIModelOption::contains(chosen) && !now.contains(chosen)) now += chosen;
    if (std::exchange(m_offered, now) == now) return;
    const QRect before = geometry();
    clearOffered();
    if (!now.isEmpty()) addSeparator();
    for (const QString& id : now)
        addModel(id, QString(id).replace(u'&', u"&&"_s) + u'\t');
    if (isVisible()) stayInPlace(before);
}

// The toolkit lets a menu that is open grow to the right and down, over the one that it came from
// and out of the screen.
void ModelMenu::stayInPlace(const QRect& before) {
    adjustSize();
    QRect now = geometry();
    const bool isLeftOfOrigin =
        std::ranges::any_of(menuAction()->associatedObjects(), [&](QObject* object) {
            const auto* origin = qobject_cast<QMenu*>(object);
            return origin && origin->isVisible() && before.left() < origin->geometry().left();
        });
    if (isLeftOfOrigin) now.moveRight(before.right());
    const QRect room = screen()->availableGeometry();
    if (now.bottom() > room.bottom()) now.moveBottom(room.bottom());
    now.moveTopLeft({std::max(now.left(), room.left()), std::max(now.top(), room.top())});
    setGeometry(now);
}

void ModelMenu::refresh() {
    if (m_model) showOffered();
    m_choices->setEnabled(!m_model.isNull());
    if (!m_model) return;
    for (QAction* choice : m_choices->actions())
        choice->setChecked(choice->data().toString() == m_model->preferredAIModelID());
}

} // namespace vorq
