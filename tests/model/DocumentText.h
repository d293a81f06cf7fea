#pragma once

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>

#include "model/MindMapDocument.h"

namespace quilmora {

// A document that holds every key of every record.
inline QByteArray fullDocument() {
  return R"({
    "version": 1, "title": "Trip", "createdAt": "2024-02-29T23:59:59Z", "updatedAt": "2024-03-01T00:00:00Z",
    "layout": "tree",
    "canvas": {"background": "#F8F0FF", "grid": true, "snap": false, "themeId": "purple"},
    "hierarchical": {"edgeSizing": false, "rootEdgeWidth": 16, "leafEdgeWidth": 4, "nodeSizing": true,
      "rootFontSize": 18, "leafFontSize": 11, "rootPadding": 15, "leafPadding": 7, "decayFunction": "cubicIn"},
    "nodes": [{
      "id": "00000000-0000-0000-0000-00000000000A", "title": "Topic", "notes": "Note", "position": [1.5, -2],
      "style": {"fill": "#111111", "stroke": "#222222", "textColor": "#333333", "shape": "ellipse", "iconSize": 24,
        "bold": true, "italic": true, "fillGradient": "#444444"},
      "icon": {"type": "sf-symbol", "value": "star"}, "badge": "in-progress", "aiGenerated": true, "emoji": "🚀",
      "url": "https://example.org", "imageData": "aGVsbG8="
    }],
    "edges": [{
      "id": "00000000-0000-0000-0000-00000000000B", "from": "00000000-0000-0000-0000-00000000000A",
      "to": "00000000-0000-0000-0000-00000000000C", "label": "leads to",
      "style": {"color": "#555555", "dashed": true, "arrowHead": "none",
        "taper": {"startWidth": 8, "endWidth": 3, "easing": "linear"}},
      "controlPointOffset": [3, 4]
    }],
    "relationships": [{
      "id": "00000000-0000-0000-0000-00000000000D", "from": "00000000-0000-0000-0000-00000000000A",
      "to": "00000000-0000-0000-0000-00000000000C", "label": "see also", "color": "#666666",
      "controlPointOffset": [5, 6]
    }],
    "regions": [{
      "id": "00000000-0000-0000-0000-00000000000E", "label": "Area", "color": "#777777", "rect": [[1, 2], [30, 40]]
    }]
  })";
}

// The JSON value with the one at `path`, such as "nodes[0].style.fill", replaced; an undefined one removes the key.
inline QJsonValue replaced(const QJsonValue& root, const QString& path, const QJsonValue& value) {
  if (path.isEmpty()) return value;
  if (path.startsWith(QLatin1Char('['))) {
    const qsizetype end = path.indexOf(QLatin1Char(']'));
    const int index = path.mid(1, end - 1).toInt();
    const qsizetype rest = path.mid(end + 1).startsWith(QLatin1Char('.')) ? end + 2 : end + 1;
    QJsonArray array = root.toArray();
    array[index] = replaced(array.at(index), path.mid(rest), value);
    return array;
  }
  qsizetype end = 0;
  while (end < path.size() && path[end] != QLatin1Char('.') && path[end] != QLatin1Char('[')) ++end;
  const QString key = path.left(end);
  const QString rest = path.mid(end < path.size() && path[end] == QLatin1Char('.') ? end + 1 : end);
  QJsonObject object = root.toObject();
  const QJsonValue inner = replaced(object.value(key), rest, value);
  if (inner.isUndefined())
    object.remove(key);
  else
    object[key] = inner;
  return object;
}

// fullDocument() with the value at `path` replaced or, by an undefined value, removed.
inline QByteArray documentWith(const QString& path, const QJsonValue& value) {
  const QJsonValue root = QJsonDocument::fromJson(fullDocument()).object();
  return QJsonDocument(replaced(root, path, value).toObject()).toJson();
}
inline QByteArray documentWithout(const QString& path) {
  return documentWith(path, QJsonValue(QJsonValue::Undefined));
}

// fullDocument() with one piece of its text replaced by another; the piece must be there.
inline QByteArray documentWithText(const char* before, const char* after) {
  QByteArray text = fullDocument();
  const qsizetype at = text.indexOf(before);
  EXPECT_GE(at, 0) << before;
  return text.replace(at, static_cast<qsizetype>(qstrlen(before)), after);
}

// Why the document is refused, or an empty text if it is not.
inline std::string refusal(const QByteArray& json) {
  try {
    decodeDocument(json);
    return {};
  } catch (const DocumentError& error) {
    EXPECT_STRNE(error.what(), "");
    return error.what();
  }
}

}  // namespace quilmora
