#include "app/AppFixture.h"

#include <QTest>

#include "model/MindMapDocument.h"
#include "platform/SettingsKeys.h"

namespace quilmora {

void AppTest::start(const QStringList& documents) {
  startWhereItStands(documents);
  window().resize(1280, 800);
}

void AppTest::startWhereItStands(const QStringList& documents) {
  if (!m_isFirstStart) m_settings.setFlag(settings::onboardingShown, true);
  m_look = std::make_unique<Look>(m_settings, m_desktop);
  m_application = std::make_unique<Application>(*qApp, machine());
  m_application->start(documents);
}

void AppTest::startActive(const QStringList& documents) {
  start(documents);
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window()));
}

Machine AppTest::machine() {
  return {
      m_clock,         m_settings,
      m_bookmarks,     m_log,
      m_writer,        m_scheduler,
      m_panels,        m_clipboard,
      m_alerts,        *m_look,
      defaultFolder(), [this] { ++m_terminations; },
      m_keys,          m_transport,
      m_onDeviceModel, {[this](const QString& path) { m_desktopList.append(path); }, [this] { m_desktopList.clear(); }},
      nullptr,         nullptr,
      m_stateFolder};
}

bool AppTest::isNothingStored() {
  m_settings.remove(settings::onboardingShown);
  return m_settings.isEmpty();
}

QString AppTest::writtenMap(const char* name, const char* title) const {
  MindMap map = MindMap::blankMap(m_clock);
  map.title = QLatin1String(title);
  EXPECT_TRUE(DiskFileWriter().write(path(name), encodeDocument(map)).isDone());
  return path(name);
}

}  // namespace quilmora
