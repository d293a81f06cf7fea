#pragma once

#include <QString>
#include <QStringList>

namespace quilmora {

// The system log. Lines begin with "Quilmora: "; there are no levels.
class Log {
 public:
  virtual ~Log() = default;
  virtual void write(const QString& line) = 0;
};

// Standard error, which the desktop's session log collects. A line that would block is dropped.
class SystemLog final : public Log {
 public:
  void write(const QString& line) override;
};

class MemoryLog final : public Log {
 public:
  void write(const QString& line) override { m_lines.append(line); }
  const QStringList& lines() const { return m_lines; }

 private:
  QStringList m_lines;
};

}  // namespace quilmora
