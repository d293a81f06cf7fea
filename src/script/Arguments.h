#pragma once

#include <initializer_list>
#include <map>
#include <optional>
#include <string_view>
#include <variant>
#include <vector>

#include <QByteArray>
#include <QPointF>
#include <QString>
#include <QStringList>
#include <QUuid>

#include "platform/TextError.h"

namespace quilmora {

// Why a line of a script was refused. The text is the line's answer.
class ScriptError : public TextError {
 public:
  using TextError::TextError;
};

enum class ArgumentKind {
  text,
  id,
  number,
  integer,
  flag,
  object,    // any JSON object
  objects,   // an array of JSON objects
  numbers,   // an array of numbers
  texts,     // an array of texts
  point,     // [x, y]
  anyValue,  // a text, a flag or a number
};

// One argument of an operation. An optional one may be null or left out.
struct ArgumentRule {
  const char* name;
  ArgumentKind kind;
  bool isOptional = false;
};

// The checked arguments of one line: for every rule a value of its kind, or nothing for an optional one. Asking for a
// kind other than the rule's is a programming error.
class Arguments {
 public:
  using Value = std::variant<QString, QUuid, double, int, bool, QByteArray, std::vector<QByteArray>,
                             std::vector<double>, QStringList, QPointF>;

  void set(std::string_view name, Value value) { m_values.insert_or_assign(name, std::move(value)); }

  const QString& text(std::string_view name) const { return get<QString>(name); }
  QUuid id(std::string_view name) const { return get<QUuid>(name); }
  double number(std::string_view name) const { return get<double>(name); }
  int integer(std::string_view name) const { return get<int>(name); }
  bool flag(std::string_view name) const { return get<bool>(name); }
  const QByteArray& object(std::string_view name) const { return get<QByteArray>(name); }
  const std::vector<QByteArray>& objects(std::string_view name) const { return get<std::vector<QByteArray>>(name); }
  const QStringList& texts(std::string_view name) const { return get<QStringList>(name); }
  const std::vector<double>& numbers(std::string_view name) const { return get<std::vector<double>>(name); }
  std::optional<QUuid> optionalId(std::string_view name) const { return getOptional<QUuid>(name); }
  std::optional<QString> optionalText(std::string_view name) const { return getOptional<QString>(name); }
  std::optional<QPointF> optionalPoint(std::string_view name) const { return getOptional<QPointF>(name); }
  // nullptr if an optional argument is null or left out.
  const Value* find(std::string_view name) const;

 private:
  template <class T>
  const T& get(std::string_view name) const {
    return std::get<T>(m_values.at(name));
  }

  template <class T>
  std::optional<T> getOptional(std::string_view name) const {
    const Value* value = find(name);
    return value ? std::optional(std::get<T>(*value)) : std::nullopt;
  }

  std::map<std::string_view, Value> m_values;  // the names belong to the rules
};

}  // namespace quilmora
