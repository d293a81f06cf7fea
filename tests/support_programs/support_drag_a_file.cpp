// A small window from which a file can be dragged: support_drag_a_file FILE X Y

#include <QDrag>
#include <QGuiApplication>
#include <QMimeData>
#include <QRasterWindow>
#include <QUrl>

namespace {

class Source final : public QRasterWindow {
 public:
  explicit Source(const QString& path) : m_path(path) {}

 protected:
  void mousePressEvent(QMouseEvent*) override {
    auto* data = new QMimeData;
    data->setUrls({QUrl::fromLocalFile(m_path)});
    auto* drag = new QDrag(this);
    drag->setMimeData(data);
    drag->exec(Qt::CopyAction | Qt::MoveAction);
  }

 private:
  QString m_path;
};

}  // namespace

int main(int argc, char** argv) {
  QGuiApplication application(argc, argv);
  const QStringList arguments = QGuiApplication::arguments();
  if (arguments.size() != 4) return 2;
  Source source(arguments.at(1));
  source.setFlags(Qt::FramelessWindowHint);
  source.setGeometry(arguments.at(2).toInt(), arguments.at(3).toInt(), 60, 60);
  source.show();
  return QGuiApplication::exec();
}
