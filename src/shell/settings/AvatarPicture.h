#pragma once

#include <QImage>
#include <QObject>

namespace vorq {

/// A picture of the user as views show it: decoded, and known to be small. Main thread only.
class AvatarPicture : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool isThere READ isThere NOTIFY changed)

  public:
    using QObject::QObject;

    [[nodiscard]] const QImage& image() const { return m_image; }
    [[nodiscard]] bool isThere() const { return !m_image.isNull(); }

    /// A null one for no picture.
    void show(const QImage& image) {
        m_image = image;
        emit changed();
    }

  signals:
    void changed();

  private:
    QImage m_image;
};

} // namespace vorq
