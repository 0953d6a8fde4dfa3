// A window that a file can be dragged out of. The argument is the file.

#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>
#include <QWidget>

namespace {

class DragSource final : public QWidget {
  public:
    explicit DragSource(const QString& file) : m_file(QUrl::fromLocalFile(file)) {}

  protected:
    void mouseMoveEvent(QMouseEvent* event) override {
        if (!event->buttons().testFlag(Qt::LeftButton)) return;
        auto* drag = new QDrag(this);
        auto* data = new QMimeData;
        data->setUrls({m_file});
        drag->setMimeData(data);
        drag->exec(Qt::CopyAction);
    }

  private:
    QUrl m_file;
};

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    DragSource window(QApplication::arguments().value(1));
    window.resize(300, 200);
    window.show();
    return QApplication::exec();
}
