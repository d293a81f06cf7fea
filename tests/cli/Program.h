#pragma once

#include <QByteArray>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonValue>
#include <QList>
#include <QProcess>
#include <QStringList>

// Runs the real batch tool, with an empty home and no display.
namespace cli {

struct Outcome {
  int status = -1;
  QByteArray out;
  QByteArray error;
};

QProcessEnvironment bareEnvironment();
QString programPath();
Outcome run(const QStringList& arguments, const QByteArray& input = {});

// The answers to a script's lines, one each.
QList<QByteArray> answers(const QByteArray& input);

// A script whose lines are collected and then run at once.
class Script {
 public:
  Script& line(const QByteArray& json);
  // Runs all lines; every one must be answered.
  const QList<QByteArray>& run();
  // The result of the line with this number, from 0, or of the last one.
  QJsonValue result(int line = -1);
  bool isOk(int line = -1);

 private:
  QByteArray m_input;
  int m_count = 0;
  QList<QByteArray> m_answers;
};

inline QByteArray compact(const QJsonValue& value) {
  return QJsonDocument(QJsonArray{value}).toJson(QJsonDocument::Compact).mid(1).chopped(1);
}

// A value of an object.
inline QJsonValue at(const QJsonValue& value, const char* key) {
  return value.toObject()[QLatin1String(key)];
}

}  // namespace cli
