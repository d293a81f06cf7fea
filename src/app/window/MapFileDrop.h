#pragma once

#include <optional>

#include <QObject>
#include <QStringList>

class QDropEvent;
class QMimeData;

namespace quilmora {

// Lets a window take map files that are dropped anywhere on it, except while a sheet is open. Other drops go where they
// would go without it.
class MapFileDrop final : public QObject {
  Q_OBJECT

 public:
  // `window` and `canvas`, which takes drops of its own, must outlive it.
  MapFileDrop(QWidget& window, QWidget& canvas);

 Q_SIGNALS:
  // After the drop has ended, because dialogs may follow. Both give paths of this machine.
  void documentsDropped(const QStringList& paths);
  void importDropped(const QString& path);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Files {
    QStringList documents;
    QString import;  // used if there are no documents
  };
  // Documents only, or one file to import, or nothing.
  static std::optional<Files> mapFiles(const QMimeData& data);
  bool take(QDropEvent& event);

  QWidget& m_window;
};

}  // namespace quilmora
