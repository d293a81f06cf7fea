#include "app/settings/AIPage.h"

#include <QLineEdit>

#include "app/look/Look.h"
#include "app/settings/ApiKeyRows.h"
#include "app/settings/SettingControls.h"
#include "app/settings/SettingsForm.h"
#include "app/window/Machine.h"
#include "canvas/view/PlainText.h"
#include "platform/Futures.h"
#include "platform/KeyStore.h"
#include "platform/LocalModelServer.h"
#include "platform/OnDeviceText.h"
#include "platform/SettingsKeys.h"
#include "platform/SettingsStore.h"

namespace quilmora {

namespace {

using namespace Qt::StringLiterals;

// The index of the section that changes with the provider, after the first.
constexpr int detailIndex = 1;
const QString onDevice = u"apple"_s;

}  // namespace

FormPage* makeAIPage(Machine& machine, QWidget* parent) {
  auto* page = new FormPage(machine.look, &Tokens::panel, parent);
  page->setAccessibleName(u"AI"_s);
  new AIPage(*page, machine);
  return page;
}

AIPage::AIPage(FormPage& page, Machine& machine) : QObject(&page), m_page(page), m_machine(machine) {
  FormSection* section = page.addSection(u"Provider"_s);
  const std::vector<SettingPicker::Row> rows = {{onDeviceText(u"Apple (On-Device)"_s), onDevice},
                                                {u"Claude (Anthropic)"_s, u"claude"_s},
                                                {u"OpenAI"_s, u"openai"_s},
                                                {u"Smart (Offline, no real AI)"_s, u"demo"_s}};
  section->addRow(u"AI Provider"_s,
                  new SettingPicker(machine.look, machine.settings, settings::aiProvider, rows, section));
  m_note = section->addNote();
  m_fallbackNote = section->addNote();
  m_destination = section->addNote();

  FormSection* features = page.addSection(u"AI Features"_s);
  features->addNote(u"AI powers the Chat sidebar and map generation."_s);
  features->addNote(u"Use AI Chat to ask questions or generate maps conversationally."_s);
  features->addNote(u"Right-click a topic for AI Expand and Summarize."_s);

  connect(&machine.settings.changes(), &SettingsChanges::changed, this, &AIPage::settingChanged);
  connect(&machine.keys, &KeyStore::changed, this, &AIPage::refreshNotes);
  refresh();
}

QString AIPage::provider() const {
  return m_machine.settings.text(settings::aiProvider)
      .value_or(settings::settingDefault(settings::aiProvider).toString());
}

void AIPage::settingChanged(const QString& key) {
  if (key == settings::aiProvider) refresh();
  if (key == settings::localModelAddress) refreshNotes();
}

void AIPage::refresh() {
  if (m_detailProvider != provider()) {
    m_detailProvider = provider();
    if (m_detail != nullptr) {
      m_detail->hide();
      m_detail->deleteLater();
    }
    m_detail = nullptr;
    m_serverNote = nullptr;
    if (const ApiKeyVendor* vendor = apiKeyVendor(provider())) {
      m_detail = m_page.addSection(u"API Keys"_s, detailIndex);
      new ApiKeyRows(*m_detail, m_machine.keys, *vendor);
    } else if (provider() == onDevice) {
      m_detail = m_page.addSection(tr("Local Model Server"), detailIndex);
      addServerRows();
      lookForServer();
    }
  }
  refreshNotes();
}

void AIPage::refreshNotes() {
  QString note;
  QString fallback;
  if (provider() == onDevice) {
    const std::optional<bool> isThere = m_machine.onDeviceModel.isThere();
    if (!isThere) {
      note = tr("Looking for a model server on this machine…");
    } else if (*isThere) {
      note = onDeviceText(u"Using on-device Apple Foundation Models. No API key needed."_s);
    } else {
      note = onDeviceText(u"Apple Intelligence requires macOS 26 (Tahoe) or later."_s);
      fallback = onDeviceText(
          u"On older macOS, Quilmora falls back to Smart mode — a built-in offline generator that produces example "
          "maps but no real AI reasoning. For real AI, pick Claude or OpenAI above and paste an API key."_s);
    }
  }
  FormSection::setNote(*m_note, note);
  FormSection::setNote(*m_fallbackNote, fallback);
  FormSection::setNote(*m_destination, destinationText(m_machine.aiProviders()));
  if (m_serverNote == nullptr) return;
  const QString address = m_machine.settings.text(settings::localModelAddress).value_or(QString()).trimmed();
  const bool isRefused = !address.isEmpty() && !modelServerAddress(address);
  FormSection::setNote(
      *m_serverNote,
      isRefused ? tr("This address is not asked: beyond this machine it must begin with https.") : QString());
}

void AIPage::addServerRows() {
  addServerField(tr("Address"), settings::localModelAddress, u"http://127.0.0.1:11434"_s);
  m_serverNote = m_detail->addNote({}, &Tokens::warning);
  addServerField(tr("Model"), settings::localModelName, tr("The first one"));
  m_detail->addNote(
      tr("Quilmora asks a language model that a server on this machine runs. Left empty, it looks for a server at the "
         "usual places, 127.0.0.1:11434 and 127.0.0.1:8080, and takes the first model that it finds."));
}

void AIPage::addServerField(const QString& name, const QString& key, const QString& placeholder) {
  auto* field = new QLineEdit(m_detail);
  field->setMinimumWidth(formFieldWidth);
  field->setPlaceholderText(placeholder);
  plain::setText(*field, m_machine.settings.text(key).value_or(QString()));
  connect(field, &QLineEdit::textEdited, this, [this, key](const QString& text) {
    if (text.trimmed().isEmpty())
      m_machine.settings.remove(key);
    else
      m_machine.settings.setText(key, text.trimmed());
  });
  connect(field, &QLineEdit::editingFinished, this, &AIPage::lookForServer);
  connect(&m_machine.settings.changes(), &SettingsChanges::changed, field, [this, field, key](const QString& changed) {
    const QString stored = m_machine.settings.text(key).value_or(QString());
    if (changed == key && field->text().trimmed() != stored) plain::setText(*field, stored);
  });
  m_detail->addRow(name, field);
}

void AIPage::lookForServer() {
  whenFinished(
      m_machine.onDeviceModel.lookUp(), this, [this](bool) { refreshNotes(); },
      [this](const std::exception&) { refreshNotes(); });
}

}  // namespace quilmora
