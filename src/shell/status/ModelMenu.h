#pragma once

#include "shell/status/FactMenu.h"
#include "shell/status/TwoLineStyle.h"

#include <QPointer>
#include <QStringList>

class QActionGroup;

namespace vorq {

class PreferredModel;

/// The models that the user can prefer, each with what it is good for and a check mark on the one
/// that they do; below them those that the backend offers. Main thread only.
class ModelMenu final : public FactMenu {
    Q_OBJECT

  public:
    ModelMenu();

    /// Nothing can be chosen before; the model must outlive the menu.
    void bind(PreferredModel& model);

  private:
    void addModels();
    void addModel(const QString& id, const QString& text);
    void clearOffered();
    void showOffered();
    void stayInPlace(const QRect& before);
    void refresh();

    TwoLineStyle m_style;
    QPointer<PreferredModel> m_model;
    QActionGroup* m_choices;
    QStringList m_offered;
};

} // namespace vorq
