#include "script/ScriptLine.h"

#include <cmath>
#include <limits>
#include <set>

#include <simdjson.h>

#include "model/JsonRecord.h"
#include "model/StoredText.h"

namespace quilmora {

namespace {

using simdjson::dom::element;

QString textOf(std::string_view text) {
  return json::textFromUtf8(text);
}

bool isNumber(const element& value) {
  return value.is_number();
}

double numberOf(const element& value) {
  return value.get_double().value_unsafe();
}

std::optional<QUuid> idOf(const element& value) {
  std::string_view text;
  if (value.get_string().get(text) != simdjson::SUCCESS) return std::nullopt;
  return uuidFromText(text);
}

std::optional<int> integerOf(const element& value) {
  if (!isNumber(value)) return std::nullopt;
  const double number = numberOf(value);
  if (number != std::trunc(number) || std::abs(number) > std::numeric_limits<int>::max()) return std::nullopt;
  return static_cast<int>(number);
}

std::optional<std::vector<double>> numbersOf(const element& value) {
  simdjson::dom::array array;
  if (value.get_array().get(array) != simdjson::SUCCESS) return std::nullopt;
  std::vector<double> numbers;
  for (const element& item : array) {
    if (!isNumber(item)) return std::nullopt;
    numbers.push_back(numberOf(item));
  }
  return numbers;
}

std::optional<QStringList> textsOf(const element& value) {
  simdjson::dom::array array;
  if (value.get_array().get(array) != simdjson::SUCCESS) return std::nullopt;
  QStringList texts;
  for (const element& item : array) {
    if (!item.is_string()) return std::nullopt;
    texts.append(textOf(item.get_string().value_unsafe()));
  }
  return texts;
}

QByteArray objectOf(const element& value) {
  return QByteArray::fromStdString(simdjson::minify(value));
}

std::optional<std::vector<QByteArray>> objectsOf(const element& value) {
  simdjson::dom::array array;
  if (value.get_array().get(array) != simdjson::SUCCESS) return std::nullopt;
  std::vector<QByteArray> objects;
  for (const element& item : array) {
    if (!item.is_object()) return std::nullopt;
    objects.push_back(objectOf(item));
  }
  return objects;
}

std::optional<QPointF> pointOf(const element& value) {
  const auto numbers = numbersOf(value);
  if (!numbers || numbers->size() != 2) return std::nullopt;
  return QPointF(numbers->at(0), numbers->at(1));
}

template <class T>
std::optional<Arguments::Value> wrapped(const std::optional<T>& value) {
  if (!value) return std::nullopt;
  return Arguments::Value(*value);
}

// The value as this kind, or nothing if it is of another kind.
std::optional<Arguments::Value> valueOf(const element& value, ArgumentKind kind) {
  switch (kind) {
    case ArgumentKind::text:
      if (value.is_string()) return textOf(value.get_string().value_unsafe());
      break;
    case ArgumentKind::id:
      return wrapped(idOf(value));
    case ArgumentKind::number:
      if (isNumber(value)) return numberOf(value);
      break;
    case ArgumentKind::integer:
      return wrapped(integerOf(value));
    case ArgumentKind::flag:
      if (value.is_bool()) return value.get_bool().value_unsafe();
      break;
    case ArgumentKind::object:
      if (value.is_object()) return objectOf(value);
      break;
    case ArgumentKind::objects:
      return wrapped(objectsOf(value));
    case ArgumentKind::numbers:
      return wrapped(numbersOf(value));
    case ArgumentKind::texts:
      return wrapped(textsOf(value));
    case ArgumentKind::point:
      return wrapped(pointOf(value));
    case ArgumentKind::anyValue:
      for (const ArgumentKind one : {ArgumentKind::text, ArgumentKind::flag, ArgumentKind::number})
        if (auto found = valueOf(value, one)) return found;
      break;
  }
  return std::nullopt;
}

QString kindName(ArgumentKind kind) {
  switch (kind) {
    case ArgumentKind::text:
      return QStringLiteral("a text");
    case ArgumentKind::id:
      return QStringLiteral("an id");
    case ArgumentKind::number:
      return QStringLiteral("a number");
    case ArgumentKind::integer:
      return QStringLiteral("an integer");
    case ArgumentKind::flag:
      return QStringLiteral("true or false");
    case ArgumentKind::object:
      return QStringLiteral("an object");
    case ArgumentKind::objects:
      return QStringLiteral("an array of objects");
    case ArgumentKind::numbers:
      return QStringLiteral("an array of numbers");
    case ArgumentKind::texts:
      return QStringLiteral("an array of texts");
    case ArgumentKind::point:
      return QStringLiteral("a point [x, y]");
    case ArgumentKind::anyValue:
      return QStringLiteral("a text, a flag or a number");
  }
  Q_UNREACHABLE();
}

}  // namespace

struct ScriptObject::Parsed {
  simdjson::dom::parser parser;
  simdjson::dom::object object;
};

ScriptObject::ScriptObject(const QByteArray& json) : m_parsed(std::make_unique<Parsed>()) {
  element root;
  const auto problem = m_parsed->parser.parse(json.constData(), static_cast<std::size_t>(json.size()), true).get(root);
  if (problem != simdjson::SUCCESS)
    throw ScriptError(QStringLiteral("not JSON: %1").arg(QLatin1String(simdjson::error_message(problem))));
  if (root.get_object().get(m_parsed->object) != simdjson::SUCCESS)
    throw ScriptError(QStringLiteral("not a JSON object"));

  std::set<std::string_view> keys;
  for (const auto& field : m_parsed->object)
    if (!keys.insert(field.key).second) throw ScriptError(QStringLiteral("%1: given twice").arg(textOf(field.key)));
}

ScriptObject::~ScriptObject() = default;

ScriptLine::ScriptLine(const QByteArray& line) : ScriptObject(line) {
  std::string_view name;
  if (m_parsed->object["do"].get_string().get(name) != simdjson::SUCCESS)
    throw ScriptError(QStringLiteral("do: missing or not a text"));
  m_operation = textOf(name);
}

Arguments ScriptObject::arguments(std::span<const ArgumentRule> rules) const {
  Arguments arguments;
  for (const ArgumentRule& rule : rules) {
    element value;
    const bool isThere = m_parsed->object[rule.name].get(value) == simdjson::SUCCESS;
    if (rule.isOptional && (!isThere || value.is_null())) continue;
    if (!isThere) throw ScriptError(QStringLiteral("%1: missing").arg(QLatin1String(rule.name)));
    auto checked = valueOf(value, rule.kind);
    if (!checked) throw ScriptError(QStringLiteral("%1: not %2").arg(QLatin1String(rule.name), kindName(rule.kind)));
    arguments.set(rule.name, *std::move(checked));
  }
  return arguments;
}

const Arguments::Value* Arguments::find(std::string_view name) const {
  const auto found = m_values.find(name);
  return found == m_values.end() ? nullptr : &found->second;
}

}  // namespace quilmora
