#include "app/versions/EarlierVersionsFlow.h"

#include <QDateTime>
#include <QFileInfo>

#include "app/versions/EarlierVersionsSheet.h"
#include "app/versions/VersionPicture.h"
#include "app/versions/VersionRow.h"
#include "editor/DocumentFileName.h"
#include "editor/DocumentSession.h"
#include "editor/MindMapViewModel.h"
#include "model/DocumentError.h"
#include "model/DocumentWriter.h"
#include "platform/Clock.h"
#include "platform/FileWriter.h"
#include "platform/Futures.h"

namespace quilmora {

namespace {

QDateTime toLocal(TimePoint time) {
  return QDateTime::fromMSecsSinceEpoch(std::chrono::floor<std::chrono::milliseconds>(time).time_since_epoch().count());
}

// Next to the document, under a name that is free.
QString freePathBeside(const QString& document, const QDateTime& time) {
  const QFileInfo file(document);
  const QString base = file.completeBaseName() + time.toString(QStringLiteral(" (yyyy-MM-dd HH.mm)"));
  QString path = file.path() + u'/' + documentFileName(base);
  for (int number = 1; QFileInfo::exists(path); ++number) path = file.path() + u'/' + documentFileName(base, number);
  return path;
}

}  // namespace

// A closed sheet still exists for a moment: whatever arrives for it then is dropped.
template <class Value, class Action>
void EarlierVersionsFlow::follow(const QFuture<Value>& future, const Action& action) {
  const auto ignored = [](const std::exception&) {};
  whenFinished(
      future, m_sheet,
      [this, sheet = m_sheet, action](const Value& value) {
        if (sheet && sheet == m_sheet) action(value);
      },
      ignored);
}

EarlierVersionsFlow::EarlierVersionsFlow(Services services, QWidget* window)
    : QObject(window), m_services(services), m_window(window) {}

EarlierVersionsSheet* EarlierVersionsFlow::sheet() const {
  return m_sheet;
}

void EarlierVersionsFlow::open() {
  if (m_sheet) return;
  m_document = m_services.editor.lastSavedFilePath().value_or(QString());
  const QString name = m_document.isEmpty() ? tr("This map has no document yet") : QFileInfo(m_document).fileName();
  m_sheet = new EarlierVersionsSheet(m_services.look, name, m_window);
  connect(m_sheet, &Sheet::cancelled, this, &EarlierVersionsFlow::close);
  connect(m_sheet, &EarlierVersionsSheet::inPlaceWanted, this, &EarlierVersionsFlow::openInPlace);
  connect(m_sheet, &EarlierVersionsSheet::besideWanted, this, &EarlierVersionsFlow::openBeside);
  m_sheet->open();
  follow(m_services.versions.list(m_document),
         [this](const std::vector<versions::Version>& versions) { listed(versions); });
}

void EarlierVersionsFlow::listed(const std::vector<versions::Version>& versions) {
  m_sheet->setVersions(versions, toLocal(m_services.clock.now()));
  addPicture(versions, 0);
}

// One after the other, newest first.
void EarlierVersionsFlow::addPicture(std::vector<versions::Version> versions, std::size_t index) {
  if (index >= versions.size()) return;
  const std::uint64_t number = versions[index].number;
  const qreal ratio = m_window->devicePixelRatioF();
  const QFuture<QImage> picture = m_services.versions.load(m_document, number)
                                      .then(QtFuture::Launch::Async, [ratio](const std::optional<MindMap>& map) {
                                        return map ? versionPicture(*map, VersionRow::pictureSize, ratio) : QImage();
                                      });
  follow(picture, [this, number, versions = std::move(versions), index](const QImage& image) {
    m_sheet->setPicture(number, image);
    addPicture(versions, index + 1);
  });
}

void EarlierVersionsFlow::openInPlace(std::uint64_t number) {
  follow(m_services.versions.load(m_document, number),
         [this, document = m_services.editor.documentNumber()](const std::optional<MindMap>& map) {
           close();
           if (!map) return Q_EMIT errorRaised(tr("This version cannot be read."));
           if (m_services.editor.documentNumber() != document) return;
           m_services.editor.captureSnapshot(false);
           m_services.editor.setMindMap(*map);
         });
}

void EarlierVersionsFlow::openBeside(std::uint64_t number) {
  struct Copy {
    QString path;
    QString problem;
  };
  const QString document = m_document;
  FileWriter& writer = m_services.writer;
  const QDateTime now = toLocal(m_services.clock.now());
  const QFuture<Copy> written =
      m_services.versions.load(document, number)
          .then(QtFuture::Launch::Async, [document, &writer, now](const std::optional<MindMap>& map) {
            if (!map) return Copy{{}, tr("This version cannot be read.")};
            const QString path = freePathBeside(document, now);
            try {
              return Copy{path, writer.write(path, encodeDocument(*map)).reason()};
            } catch (const DocumentError& error) {
              return Copy{{}, error.message()};
            }
          });
  follow(written, [this](const Copy& copy) {
    close();
    if (copy.problem.isEmpty())
      m_services.session.open(copy.path);
    else
      Q_EMIT errorRaised(copy.problem);
  });
}

void EarlierVersionsFlow::close() {
  if (m_sheet) m_sheet->finish();
  m_sheet.clear();
}

}  // namespace quilmora
