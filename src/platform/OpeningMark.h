#pragma once

#include <optional>
#include <utility>

#include <QString>

namespace quilmora {

// Records on disk which document is being opened and drawn for the first time, so that the next start knows if it
// crashed the program.
class OpeningMark {
 public:
  virtual ~OpeningMark() = default;
  virtual void set(const QString& path) = 0;
  virtual void clear() = 0;
  // The document of a mark whose process ended before clearing it. Stays until another is set.
  virtual std::optional<QString> left() const = 0;
};

// A small file of its own. If it cannot be written, there is no mark.
class FileOpeningMark final : public OpeningMark {
 public:
  explicit FileOpeningMark(QString file);
  void set(const QString& path) override;
  void clear() override;
  std::optional<QString> left() const override { return m_left; }

 private:
  QString m_file;
  std::optional<QString> m_left;
};

class MemoryOpeningMark final : public OpeningMark {
 public:
  void set(const QString& path) override { m_marked = path; }
  void clear() override { m_marked.reset(); }
  std::optional<QString> left() const override { return m_left; }

  const std::optional<QString>& marked() const { return m_marked; }
  // As after a restart of the program.
  void startAnew() { m_left = m_marked; }

 private:
  std::optional<QString> m_marked;
  std::optional<QString> m_left;
};

}  // namespace quilmora
