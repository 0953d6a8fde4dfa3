// A window that can be dragged out of: the files that are its arguments, or, after "--picture", the
// picture in one, which is handed over without the file. As a file manager it would rather move the
// files, and deletes those that were moved.

#include <QApplication>
#include <QDrag>
#include <QFile>
#include <QImage>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>
#include <QWidget>

namespace {

class DragSource final : public QWidget {
  public:
    explicit DragSource(const QStringList& arguments) {
        if (arguments.value(0) == "--picture")
            m_picture.load(arguments.value(1));
        else
            for (const QString& file : arguments)
                m_files += QUrl::fromLocalFile(file);
    }

  protected:
    void mouseMoveEvent(QMouseEvent* event) override {
        if (!event->buttons().testFlag(Qt::LeftButton)) return;
        auto* drag = new QDrag(this);
        auto* data = new QMimeData;
        if (m_picture.isNull())
            data->setUrls(m_files);
        else
            data->setImageData(m_picture);
        drag->setMimeData(data);
        const Qt::DropAction done = drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::MoveAction);
        if (done != Qt::MoveAction) return;
        for (const QUrl& file : m_files)
            QFile::remove(file.toLocalFile());
    }

  private:
    QList<QUrl> m_files;
    QImage m_picture;
};

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    DragSource window(QApplication::arguments().mid(1));
    window.resize(300, 200);
    window.show();
    return QApplication::exec();
}
