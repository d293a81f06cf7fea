#include "cli/Program.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "support/Folders.h"

namespace cli {

QString programPath() {
  return programFolder() + QStringLiteral("/quilmora-cli");
}

QProcessEnvironment bareEnvironment() {
  static const QTemporaryDir home;
  QProcessEnvironment environment;
  for (const auto* name : {"ASAN_OPTIONS", "LSAN_OPTIONS", "UBSAN_OPTIONS", "PATH"})
    if (qEnvironmentVariableIsSet(name)) environment.insert(QLatin1String(name), qEnvironmentVariable(name));
  environment.insert(QStringLiteral("HOME"), home.path());
  environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
  return environment;
}

Outcome run(const QStringList& arguments, const QByteArray& input) {
  QProcess process;
  process.setProcessEnvironment(bareEnvironment());
  process.start(programPath(), arguments);
  process.write(input);
  process.closeWriteChannel();
  Outcome outcome;
  if (!process.waitForFinished(120'000) || process.exitStatus() != QProcess::NormalExit) {
    ADD_FAILURE() << "quilmora-cli did not end: " << process.errorString().toStdString();
    return outcome;
  }
  outcome.status = process.exitCode();
  outcome.out = process.readAllStandardOutput();
  outcome.error = process.readAllStandardError();
  return outcome;
}

QList<QByteArray> answers(const QByteArray& input) {
  const Outcome outcome = run({QStringLiteral("script")}, input);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.error.toStdString(), "");
  QList<QByteArray> lines = outcome.out.split('\n');
  EXPECT_EQ(lines.takeLast().toStdString(), "");
  return lines;
}

Script& Script::line(const QByteArray& json) {
  m_input += json + '\n';
  ++m_count;
  return *this;
}

const QList<QByteArray>& Script::run() {
  if (m_answers.isEmpty()) {
    m_answers = answers(m_input);
    EXPECT_EQ(m_answers.size(), m_count);
    while (m_answers.size() < m_count) m_answers.append("{}");
  }
  return m_answers;
}

QJsonValue Script::result(int line) {
  const auto& all = run();
  return QJsonDocument::fromJson(all[line < 0 ? m_count - 1 : line]).object()[QLatin1String("result")];
}

bool Script::isOk(int line) {
  const auto& all = run();
  return QJsonDocument::fromJson(all[line < 0 ? m_count - 1 : line]).object()[QLatin1String("ok")].toBool();
}

}  // namespace cli
