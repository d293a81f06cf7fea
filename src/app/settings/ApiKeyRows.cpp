#include "app/settings/ApiKeyRows.h"

#include <algorithm>
#include <array>

#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>

#include "app/settings/SettingsForm.h"
#include "canvas/view/PlainText.h"
#include "platform/KeyStore.h"

namespace quilmora {

namespace {

struct Entry {
  QString provider;
  ApiKeyVendor vendor;
};

const std::array<Entry, 2>& vendors() {
  static const std::array<Entry, 2> table = {{
      {QStringLiteral("claude"),
       {accounts::claudeKey, QStringLiteral("Claude API Key"),
        QStringLiteral("Get your API key at console.anthropic.com.")}},
      {QStringLiteral("openai"),
       {accounts::openAIKey, QStringLiteral("OpenAI API Key"),
        QStringLiteral("Get your API key at platform.openai.com.")}},
  }};
  return table;
}

}  // namespace

const ApiKeyVendor* apiKeyVendor(const QString& provider) {
  const auto found = std::ranges::find(vendors(), provider, &Entry::provider);
  return found == vendors().end() ? nullptr : &found->vendor;
}

ApiKeyRows::ApiKeyRows(FormSection& section, KeyStore& keys, const ApiKeyVendor& vendor)
    : QObject(&section),
      m_keys(keys),
      m_account(vendor.account),
      m_field(new QLineEdit(&section)),
      m_remove(new QPushButton(tr("&Remove Key"), &section)),
      m_note(nullptr) {
  m_field->setEchoMode(QLineEdit::Password);
  m_field->setMinimumWidth(formFieldWidth);
  m_field->setAccessibleName(vendor.title);
  section.addRow(vendor.title, m_field);
  section.addNote(vendor.hint);
  m_note = section.addNote({}, &Tokens::warning);
  auto* row = new QWidget(&section);
  auto* line = new QHBoxLayout(row);
  line->setContentsMargins(metrics::gapMedium, metrics::gap, metrics::gapMedium, metrics::gap);
  line->addStretch();
  line->addWidget(m_remove);
  m_remove->setProperty("destructive", true);
  section.addRow(row);

  // Spaces around a key come from where it was copied.
  connect(m_field, &QLineEdit::textEdited, this,
          [this](const QString& text) { m_keys.saveKey(m_account, text.trimmed()); });
  connect(m_remove, &QPushButton::clicked, this, [this] {
    m_keys.deleteKey(m_account);
    m_field->setFocus(Qt::OtherFocusReason);
  });
  connect(&keys, &KeyStore::changed, this, &ApiKeyRows::refresh);
  keys.loadKey(m_account);
  refresh();
}

void ApiKeyRows::refresh() {
  const std::optional<QString> known = m_keys.knownKey(m_account);
  if (known && m_field->text().trimmed() != *known) plain::setText(*m_field, *known);
  m_field->setPlaceholderText(known ? tr("Paste a key here") : tr("Asking the key store…"));
  m_remove->setEnabled(known && !known->isEmpty());
  FormSection::setNote(*m_note, m_keys.note());
}

}  // namespace quilmora
