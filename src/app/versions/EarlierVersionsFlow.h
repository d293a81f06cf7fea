#pragma once

#include <QFuture>
#include <QObject>
#include <QPointer>

#include "editor/versions/EarlierVersions.h"

class QWidget;

namespace quilmora {

class DocumentSession;
class EarlierVersionsSheet;
class FileWriter;
class Look;
class MindMapViewModel;

// Shows the earlier versions of the open document and opens the chosen one: in place of the open map, as one undo step,
// or next to it, as a new document in the same folder.
class EarlierVersionsFlow final : public QObject {
  Q_OBJECT

 public:
  // All must outlive the flow.
  struct Services {
    const Look& look;
    MindMapViewModel& editor;
    DocumentSession& session;
    EarlierVersions& versions;
    FileWriter& writer;
    const Clock& clock;
  };
  EarlierVersionsFlow(Services services, QWidget* window);

  void open();
  EarlierVersionsSheet* sheet() const;

 Q_SIGNALS:
  void errorRaised(const QString& message);

 private:
  // Calls action(Value) when the future ends, unless the sheet that is open now has been closed by then.
  template <class Value, class Action>
  void follow(const QFuture<Value>& future, const Action& action);
  void listed(const std::vector<versions::Version>& versions);
  void addPicture(std::vector<versions::Version> versions, std::size_t index);
  void openInPlace(std::uint64_t number);
  void openBeside(std::uint64_t number);
  void close();

  Services m_services;
  QWidget* m_window;
  QPointer<EarlierVersionsSheet> m_sheet;
  QString m_document;
};

}  // namespace quilmora
