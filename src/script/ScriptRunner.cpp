#include "script/ScriptRunner.h"

#include <cstdio>

#include "script/LineReader.h"
#include "script/ScriptLine.h"

namespace quilmora {

namespace {

QByteArray refusal(const QString& reason) {
  return JsonText().beginObject().key("ok").flag(false).key("error").text(reason).endObject().take();
}

QByteArray success(const QByteArray& result) {
  return result.isEmpty() ? QByteArray("{\"ok\":true}") : "{\"ok\":true,\"result\":" + result + '}';
}

}  // namespace

ScriptRunner::ScriptRunner() {
  for (const auto& chapter : {documentOperations(), editingOperations(), connectionOperations(), viewOperations(),
                              layoutOperations(), geometryOperations(), themeOperations(), aiOperations()})
    for (const Operation& operation : chapter) m_operations.emplace(QLatin1String(operation.name), operation);
}

QByteArray ScriptRunner::answer(const QByteArray& line) {
  try {
    const ScriptLine parsed(line);
    const auto found = m_operations.find(parsed.operation());
    if (found == m_operations.end())
      return refusal(QStringLiteral("unknown operation %1").arg(parsed.operation().left(80)));
    JsonText result;
    found->second.run(m_script, parsed.arguments(found->second.rules), result);
    return success(result.take());
  } catch (const TextError& error) {
    return refusal(error.message());
  } catch (const std::exception& error) {
    return refusal(QString::fromUtf8(error.what()));
  }
}

bool runScript() {
  ScriptRunner runner;
  LineReader reader(stdin);
  while (const auto line = reader.next()) {
    QByteArray answer =
        line->isTooLong ? refusal(QStringLiteral("the line is longer than 256 MB")) : runner.answer(line->text);
    answer.append('\n');
    const auto size = static_cast<std::size_t>(answer.size());
    if (std::fwrite(answer.constData(), 1, size, stdout) != size || std::fflush(stdout) != 0) return false;
  }
  return true;
}

}  // namespace quilmora
