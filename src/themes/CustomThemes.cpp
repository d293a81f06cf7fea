#include "themes/CustomThemes.h"

#include <optional>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "model/JsonWriter.h"
#include "platform/SettingsKeys.h"
#include "platform/SettingsStore.h"

namespace quilmora {

namespace {

// Reads required texts, and remembers whether one was missing or not a text.
class TextReader {
 public:
  explicit TextReader(QJsonObject object) : m_object(std::move(object)) {}

  QString operator()(const QString& key) {
    const QJsonValue value = m_object.value(key);
    m_isWhole = m_isWhole && value.isString();
    return value.toString();
  }
  bool isWhole() const { return m_isWhole; }

 private:
  QJsonObject m_object;
  bool m_isWhole = true;
};

const QString idKey = QStringLiteral("id");
const QString nameKey = QStringLiteral("name");
const QString backgroundKey = QStringLiteral("background");
const QString edgeColorKey = QStringLiteral("edgeColor");
const QString nodeColorsKey = QStringLiteral("nodeColors");
const QString fillKey = QStringLiteral("fill");
const QString strokeKey = QStringLiteral("stroke");
const QString textColorKey = QStringLiteral("textColor");
const QString noColor = QStringLiteral("#808080");

std::optional<CustomTheme> decodeTheme(const QJsonValue& value) {
  if (!value.isObject()) return std::nullopt;
  const QJsonObject object = value.toObject();
  TextReader text(object);
  CustomTheme theme;
  theme.id = text(idKey);
  theme.name = text(nameKey);
  theme.background = text(backgroundKey);
  theme.edgeColor = text(edgeColorKey);
  const QJsonValue rows = object.value(nodeColorsKey);
  if (!text.isWhole() || !rows.isArray()) return std::nullopt;
  for (const auto& row : rows.toArray()) {
    TextReader color(row.toObject());
    CustomTheme::NodeColor colors;
    colors.fill = color(fillKey);
    colors.stroke = color(strokeKey);
    colors.textColor = color(textColorKey);
    if (!color.isWhole()) return std::nullopt;
    theme.nodeColors.push_back(std::move(colors));
  }
  return theme;
}

}  // namespace

QByteArray encodeCustomThemes(const std::vector<CustomTheme>& themes) {
  json::JsonWriter writer(JsonForm::compact);
  const auto put = [&writer](const QString& key, const QString& text) {
    writer.key(key.toStdString());
    writer.text(text);
  };
  writer.beginArray();
  for (const CustomTheme& theme : themes) {
    writer.item();
    writer.beginObject();
    put(idKey, theme.id);
    put(nameKey, theme.name);
    put(backgroundKey, theme.background);
    put(edgeColorKey, theme.edgeColor);
    writer.key(nodeColorsKey.toStdString());
    writer.beginArray();
    for (const CustomTheme::NodeColor& colors : theme.nodeColors) {
      writer.item();
      writer.beginObject();
      put(fillKey, colors.fill);
      put(strokeKey, colors.stroke);
      put(textColorKey, colors.textColor);
      writer.endObject();
    }
    writer.endArray();
    writer.endObject();
  }
  writer.endArray();
  return writer.take();
}

std::vector<CustomTheme> decodeCustomThemes(const QByteArray& json) {
  const QJsonDocument document = QJsonDocument::fromJson(json);
  if (!document.isArray()) return {};
  std::vector<CustomTheme> themes;
  for (const auto& value : document.array()) {
    std::optional<CustomTheme> theme = decodeTheme(value);
    if (!theme) return {};
    themes.push_back(std::move(*theme));
  }
  return themes;
}

std::vector<CustomTheme> loadCustomThemes(const SettingsStore& settings) {
  const auto stored = settings.bytes(settings::customThemes);
  return stored ? decodeCustomThemes(*stored) : std::vector<CustomTheme>();
}

void saveCustomThemes(SettingsStore& settings, const std::vector<CustomTheme>& themes) {
  settings.setBytes(settings::customThemes, encodeCustomThemes(themes));
}

Theme toTheme(const CustomTheme& custom) {
  Theme theme;
  theme.id = QStringLiteral("custom_") + custom.id;
  theme.name = custom.name;
  theme.background = custom.background;
  theme.edgeColor = custom.edgeColor;
  theme.category = ThemeCategory::custom;
  for (const CustomTheme::NodeColor& colors : custom.nodeColors)
    theme.nodeColors.push_back({colors.fill, colors.stroke, colors.textColor, std::nullopt});
  // A theme needs a row for every depth, whatever was stored.
  if (theme.nodeColors.empty()) theme.nodeColors.push_back({noColor, noColor, QStringLiteral("#FFFFFF"), std::nullopt});
  return theme;
}

std::vector<Theme> allThemesIncludingCustom(const SettingsStore& settings) {
  std::vector<Theme> themes = allThemes();
  for (const CustomTheme& custom : loadCustomThemes(settings)) themes.push_back(toTheme(custom));
  return themes;
}

}  // namespace quilmora
