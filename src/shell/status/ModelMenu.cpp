#include "shell/status/ModelMenu.h"

#include "backend/account/ModelCatalogue.h"
#include "backend/account/PreferredModel.h"

#include <QActionGroup>
#include <QCoreApplication>

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
    for (const VorqAIModelOption& option : VorqAIModelOption::all) {
        QAction* choice =
            m_choices->addAction(shown(option.title) + u'\t' + shown(option.subtitle));
        choice->setCheckable(true);
        choice->setData(option.id.toString());
        addAction(choice);
    }
}

void ModelMenu::bind(PreferredModel& model) {
    if (m_model == &model) return;
    m_model = &model;
    connect(&model, &PreferredModel::preferredAIModelIDChanged, this, &ModelMenu::refresh);
    refresh();
}

void ModelMenu::refresh() {
    m_choices->setEnabled(!m_model.isNull());
    if (!m_model) return;
    for (QAction* choice : m_choices->actions())
        choice->setChecked(choice->data().toString() == m_model->preferredAIModelID());
}

} // namespace vorq
