#pragma once

#include "shell/settings/AvatarPicture.h"
#include "ui/native/PaintedItem.h"

#include <QPointer>
#include <QtQml/qqmlregistration.h>

namespace vorq {

/// A picture of the user, cut to a circle.
class AvatarPainter : public vorq::PaintedItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(vorq::AvatarPicture* picture READ picture WRITE setPicture NOTIFY pictureChanged)

  public:
    explicit AvatarPainter(QQuickItem* parent = nullptr);

    [[nodiscard]] AvatarPicture* picture() const { return m_picture; }
    void setPicture(AvatarPicture* picture);

    void paint(QPainter* painter) override;

  signals:
    void pictureChanged();

  private:
    QPointer<AvatarPicture> m_picture;
};

} // namespace vorq
