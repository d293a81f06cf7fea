#pragma once

#include <initializer_list>
#include <map>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <variant>
#include <vector>

#include <QByteArray>
#include <QString>
#include <QUuid>

namespace quilmora {

// Why a line of a script was refused. The text is the line's answer.
class ScriptError : public std::runtime_error {
 public:
  explicit ScriptError(const QString& message) : std::runtime_error(message.toStdString()) {}
  QString message() const { return QString::fromUtf8(what()); }
};

enum class ArgumentKind {
  text,
  id,
  number,
  integer,
  flag,
  object,    // any JSON object
  numbers,   // an array of numbers
  anyValue,  // a text, a flag or a number
};

// One argument of an operation. An optional one may be null or left out.
struct ArgumentRule {
  const char* name;
  ArgumentKind kind;
  bool isOptional = false;
};

// The checked arguments of one line: for every rule a value of its kind, or nothing for an optional one. Asking for another
// kind than the rule names is a programming error.
class Arguments {
 public:
  using Value = std::variant<QString, QUuid, double, int, bool, QByteArray, std::vector<double>>;

  void set(std::string_view name, Value value) { m_values.insert_or_assign(name, std::move(value)); }

  const QString& text(std::string_view name) const { return get<QString>(name); }
  QUuid id(std::string_view name) const { return get<QUuid>(name); }
  double number(std::string_view name) const { return get<double>(name); }
  int integer(std::string_view name) const { return get<int>(name); }
  bool flag(std::string_view name) const { return get<bool>(name); }
  const QByteArray& object(std::string_view name) const { return get<QByteArray>(name); }
  const std::vector<double>& numbers(std::string_view name) const { return get<std::vector<double>>(name); }
  // Nothing where an optional argument is null or left out.
  const Value* find(std::string_view name) const;

 private:
  template <class T>
  const T& get(std::string_view name) const {
    return std::get<T>(m_values.at(name));
  }

  std::map<std::string_view, Value> m_values;  // the names belong to the rules
};

}  // namespace quilmora
