#pragma once

#include <functional>
#include <optional>

#include <QPointer>

#include "app/inspectors/Inspector.h"

namespace quilmora {

class CopyField;
class CopyNotes;
class EmojiPicker;
class ImageSection;
class PanelButton;
class PanelPicker;
class StyleSamplerRow;

// The form for one topic.
class NodeInspector final : public Inspector {
  Q_OBJECT

 public:
  NodeInspector(const InspectorContext& context, QWidget* parent);

  void refresh(const InspectorSubject& subject) override;
  void commitTyping() override;
  std::optional<OpenText> openText() const override;

  // The popover while it is open, else nullptr.
  EmojiPicker* emojiPicker() const;

 private:
  void addTitle();
  void addStyle();
  void addBadge();
  void addQuickStyle();
  void addLink();
  void addImage();
  void addNotes();
  void addColors();
  void showNode(const Node& node, bool isOther);

  // The current topic, if it still exists.
  std::optional<Node> present() const;
  void changeStyle(const std::function<void(NodeStyle&)>& change);
  ColorWell* colorWell(const QString& name, QString NodeStyle::*color);
  void pickEmoji();
  void openUrl();
  void followUrl();

  std::optional<Node> m_node;  // as last shown
  CopyField* m_title = nullptr;
  PanelPicker* m_shape = nullptr;
  PanelButton* m_emoji = nullptr;
  QPointer<EmojiPicker> m_emojiPicker;
  PanelPicker* m_badge = nullptr;
  StyleSamplerRow* m_samples = nullptr;
  CopyField* m_url = nullptr;
  PanelButton* m_openUrl = nullptr;
  ImageSection* m_image = nullptr;
  CopyNotes* m_notes = nullptr;
  ColorWell* m_fill = nullptr;
  ColorWell* m_stroke = nullptr;
  ColorWell* m_text = nullptr;
};

}  // namespace quilmora
