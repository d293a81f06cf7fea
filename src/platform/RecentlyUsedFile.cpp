#include "platform/RecentlyUsedFile.h"

#include <algorithm>
#include <ranges>
#include <vector>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QUrl>
#include <QXmlStreamReader>

#include "platform/FileWriter.h"
#include "platform/RegularFile.h"

namespace quilmora {

namespace {

using namespace Qt::StringLiterals;

constexpr qsizetype maxSize = qsizetype{16} << 20;
const QString applicationName = u"Quilmora"_s;
const QString bookmarkNamespace = u"http://www.freedesktop.org/standards/desktop-bookmarks"_s;
const QString mimeNamespace = u"http://www.freedesktop.org/standards/shared-mime-info"_s;

const QString emptyList =
    uR"(<?xml version="1.0" encoding="UTF-8"?>
<xbel version="1.0"
      xmlns:bookmark="http://www.freedesktop.org/standards/desktop-bookmarks"
      xmlns:mime="http://www.freedesktop.org/standards/shared-mime-info"
>
</xbel>
)"_s;

// A range of the text: its first position and its end.
struct Piece {
  qsizetype begin = 0;
  qsizetype end = 0;
};

struct Entry {
  QString address;
  Piece all;
  Piece startTag;
  std::vector<Piece> ours;  // this application's elements
  int otherApplications = 0;
  std::optional<qsizetype> applicationsEnd;  // before the closing tag of the list of applications
};

struct List {
  std::vector<Entry> entries;
  qsizetype end = 0;  // before the closing tag of the root; 0 if there is none
};

// The end of the next `end`; the text's size if there is none.
qsizetype behind(const QString& text, qsizetype from, QLatin1String end) {
  const qsizetype found = text.indexOf(end, from);
  return found < 0 ? text.size() : found + end.size();
}

// The position after the ">" that closes the tag at `from`, ignoring those in quotes.
qsizetype behindTag(const QString& text, qsizetype from) {
  QChar quote;
  for (qsizetype at = from; at < text.size(); ++at) {
    const QChar character = text.at(at);
    if (!quote.isNull()) {
      if (character == quote) quote = QChar();
    } else if (character == u'"' || character == u'\'') {
      quote = character;
    } else if (character == u'>') {
      return at + 1;
    }
  }
  return text.size();
}

// The tags of all elements of a well-formed text, in order.
std::vector<Piece> tagsIn(const QString& text) {
  std::vector<Piece> tags;
  for (qsizetype at = text.indexOf(u'<'); at >= 0; at = text.indexOf(u'<', at)) {
    const QStringView rest = QStringView(text).mid(at);
    if (rest.startsWith(u"<!--")) {
      at = behind(text, at + 4, QLatin1String("-->"));
    } else if (rest.startsWith(u"<![CDATA[")) {
      at = behind(text, at, QLatin1String("]]>"));
    } else if (rest.startsWith(u"<?")) {
      at = behind(text, at, QLatin1String("?>"));
    } else {
      const qsizetype end = behindTag(text, at);
      if (!rest.startsWith(u"<!")) tags.push_back({at, end});
      at = end;
    }
  }
  return tags;
}

// Walks the elements of the list: their content comes from the parser, their positions from the tags.
class ListReader {
 public:
  explicit ListReader(const QString& text) : m_text(text), m_reader(text), m_tags(tagsIn(text)) {}

  // Nothing if the text is not well-formed, or contains elements that are not written out.
  std::optional<List> read() {
    while (!m_reader.atEnd()) {
      const auto token = m_reader.readNext();
      if (token != QXmlStreamReader::StartElement && token != QXmlStreamReader::EndElement) continue;
      const bool starts = token == QXmlStreamReader::StartElement;
      const bool closesItself = !starts && m_closesItself;
      if (!closesItself && m_tag == m_tags.size()) return std::nullopt;
      const Piece tag = closesItself ? Piece{m_tags[m_tag - 1].end, m_tags[m_tag - 1].end} : m_tags[m_tag++];
      m_closesItself = starts && m_text.at(tag.end - 2) == u'/';
      if (starts)
        elementStarts(tag);
      else
        elementEnds(tag);
    }
    if (m_reader.hasError() || m_list.end == 0 || m_tag != m_tags.size()) return std::nullopt;
    return m_list;
  }

 private:
  bool isOurs() const { return m_reader.attributes().value(u"name"_s) == applicationName; }

  void elementStarts(Piece tag) {
    ++m_depth;
    const auto name = m_reader.name();
    if (m_depth == 1) m_hasRoot = name == u"xbel"_s;
    if (m_hasRoot && m_depth == 2 && name == u"bookmark"_s)
      m_list.entries.push_back({m_reader.attributes().value(u"href"_s).toString(), tag, tag, {}, 0, std::nullopt});
    if (!isInEntry() || m_reader.namespaceUri() != bookmarkNamespace || name != u"application"_s) return;
    if (isOurs())
      m_applicationBegin = tag.begin;
    else
      ++m_list.entries.back().otherApplications;
  }

  void elementEnds(Piece tag) {
    const auto name = m_reader.name();
    const bool isBookmarks = m_reader.namespaceUri() == bookmarkNamespace;
    if (m_depth == 1 && m_hasRoot && tag.begin != tag.end) m_list.end = tag.begin;
    if (isInEntry() && m_depth == 2) m_list.entries.back().all.end = tag.end;
    if (isInEntry() && isBookmarks && name == u"application"_s && m_applicationBegin)
      m_list.entries.back().ours.push_back({*std::exchange(m_applicationBegin, std::nullopt), tag.end});
    if (isInEntry() && isBookmarks && name == u"applications"_s && tag.begin != tag.end)
      m_list.entries.back().applicationsEnd = tag.begin;
    --m_depth;
  }

  bool isInEntry() const { return m_hasRoot && m_depth >= 2 && !m_list.entries.empty(); }

  const QString& m_text;
  QXmlStreamReader m_reader;
  const std::vector<Piece> m_tags;
  std::size_t m_tag = 0;        // the next one
  bool m_closesItself = false;  // the element that started last
  List m_list;
  int m_depth = 0;
  bool m_hasRoot = false;
  std::optional<qsizetype> m_applicationBegin;
};

QString timeText(const Clock& clock) {
  const auto sinceEpoch = std::chrono::duration_cast<std::chrono::milliseconds>(clock.now().time_since_epoch());
  return QDateTime::fromMSecsSinceEpoch(sinceEpoch.count(), Qt::UTC).toString(Qt::ISODateWithMs);
}

QString typeOf(const QString& path) {
  const bool isJson = QFileInfo(path).suffix().compare(u"json"_s, Qt::CaseInsensitive) == 0;
  return isJson ? u"application/json"_s : u"application/x-quilmora-mindmap"_s;
}

QString applicationElement(const QString& time) {
  return uR"(<bookmark:application xmlns:bookmark="%1" name="%2" exec="&apos;quilmora %u&apos;" modified="%3" count="1"/>)"_s
      .arg(bookmarkNamespace, applicationName, time);
}

QString newEntry(const QString& path, const QString& address, const QString& time) {
  return uR"(<bookmark href="%1" added="%2" modified="%2" visited="%2">
    <info>
      <metadata owner="http://freedesktop.org">
        <mime:mime-type xmlns:mime="%3" type="%4"/>
        <bookmark:applications xmlns:bookmark="%5">
          %6
        </bookmark:applications>
      </metadata>
    </info>
  </bookmark>)"_s.arg(address.toHtmlEscaped(), time, mimeNamespace, typeOf(path), bookmarkNamespace,
                      applicationElement(time));
}

// The start of the line if only spaces precede `at` on it, else `at` itself.
qsizetype startOfBlanks(const QString& text, qsizetype at) {
  qsizetype begin = at;
  while (begin > 0 && (text.at(begin - 1) == u' ' || text.at(begin - 1) == u'\t')) --begin;
  return begin == 0 || text.at(begin - 1) == u'\n' ? begin : at;
}

// On a line of its own if the list has lines.
QString withEntry(QString text, qsizetype at, const QString& entry) {
  const qsizetype begin = startOfBlanks(text, at);
  const bool hasLines = begin > 0 && text.at(begin - 1) == u'\n';
  return text.insert(begin, hasLines ? u"  "_s + entry + u'\n' : entry);
}

// The start tag with a new value of an existing attribute.
QString withAttribute(QString tag, const QString& name, const QString& value) {
  static const QString quotes = u"\"'"_s;
  for (const QChar quote : quotes) {
    const QString begin = u' ' + name + u'=' + quote;
    const qsizetype at = tag.indexOf(begin);
    const qsizetype end = at < 0 ? -1 : tag.indexOf(quote, at + begin.size());
    if (end >= 0) return tag.replace(at + begin.size(), end - at - begin.size(), value);
  }
  return tag;
}

// With its line, if it has one of its own.
QString without(QString text, Piece piece) {
  const qsizetype begin = startOfBlanks(text, piece.begin);
  const bool hasLine =
      begin > 0 && text.at(begin - 1) == u'\n' && piece.end < text.size() && text.at(piece.end) == u'\n';
  return hasLine ? text.remove(begin, piece.end + 1 - begin) : text.remove(piece.begin, piece.end - piece.begin);
}

}  // namespace

RecentlyUsedFile::RecentlyUsedFile(QString path, FileWriter& writer, const Clock& clock)
    : m_path(std::move(path)), m_writer(writer), m_clock(clock) {}

QString RecentlyUsedFile::pathForUser() {
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/recently-used.xbel"_s;
}

std::optional<QString> RecentlyUsedFile::read() const {
  if (!QFileInfo::exists(m_path)) return emptyList;
  try {
    const QByteArray bytes = readWholeFile(m_path, maxSize);
    const QString text = QString::fromUtf8(bytes);
    // A file that could not be written back unchanged is left alone.
    return text.toUtf8() == bytes ? std::optional(text) : std::nullopt;
  } catch (const FileReadError&) {
    return std::nullopt;
  }
}

void RecentlyUsedFile::write(const QString& text) const {
  const bool isNew = !QFileInfo::exists(m_path);
  if (isNew) QDir().mkpath(QFileInfo(m_path).path());
  if (m_writer.write(m_path, text.toUtf8()).isDone() && isNew)
    QFile::setPermissions(m_path, QFile::ReadOwner | QFile::WriteOwner);
}

void RecentlyUsedFile::note(const QString& documentPath) {
  if (documentPath == std::exchange(m_lastNoted, documentPath)) return;
  const std::optional<QString> text = read();
  const std::optional<List> list = text ? ListReader(*text).read() : std::nullopt;
  if (!list) return;
  const QString address = QString::fromLatin1(QUrl::fromLocalFile(documentPath).toEncoded());
  const QString time = timeText(m_clock);
  const auto found = std::ranges::find(list->entries, address, &Entry::address);
  if (found == list->entries.end()) {
    write(withEntry(*text, list->end, newEntry(documentPath, address, time)));
    return;
  }
  // From the end to the start, so that earlier positions stay valid.
  QString changed = *text;
  if (found->ours.empty() && found->applicationsEnd) changed.insert(*found->applicationsEnd, applicationElement(time));
  const Piece& tag = found->startTag;
  QString start = text->mid(tag.begin, tag.end - tag.begin);
  start = withAttribute(withAttribute(start, u"modified"_s, time), u"visited"_s, time);
  write(changed.replace(tag.begin, tag.end - tag.begin, start));
}

void RecentlyUsedFile::clear() {
  m_lastNoted.clear();
  const std::optional<QString> text = read();
  const std::optional<List> list = text ? ListReader(*text).read() : std::nullopt;
  if (!list) return;
  QString changed = *text;
  for (const auto& entry : std::views::reverse(list->entries)) {
    if (entry.ours.empty()) continue;
    if (entry.otherApplications == 0) {
      changed = without(changed, entry.all);
    } else {
      for (const Piece& piece : std::views::reverse(entry.ours)) changed = without(changed, piece);
    }
  }
  if (changed != *text) write(changed);
}

}  // namespace quilmora
