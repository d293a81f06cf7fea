#pragma once

#include <cstdint>
#include <vector>

#include <QByteArray>
#include <QHash>
#include <QPointF>
#include <QRectF>
#include <QString>
#include <QUuid>

#include "model/ByteBuffer.h"
#include "platform/Clock.h"
#include "platform/TextError.h"

namespace quilmora::journal {

// Bytes that no writer of ours made, or that belong to another map.
class JournalError : public TextError {
 public:
  using TextError::TextError;
};

// Writes values in few bytes, lowest byte first. A number that is not finite becomes what a document would hold.
class ByteWriter {
 public:
  // How texts are written. Exact texts read back to the last code unit, and short ones are stored once; plain texts
  // depend only on the text and hold what a document would hold.
  enum class Texts { exact, plain };

  explicit ByteWriter(Texts texts = Texts::exact) : m_texts(texts) {}

  // Seven bits per byte.
  void put(std::uint64_t value) {
    char* at = m_bytes.room(maxNumberLength);
    for (; value >= 0x80; value >>= 7) *at++ = static_cast<char>(0x80 | (value & 0x7F));
    *at++ = static_cast<char>(value);
    m_bytes.setEnd(at);
  }
  void putFixed(std::uint64_t value, int bytes) {
    char* at = m_bytes.room(bytes);
    for (int i = 0; i < bytes; ++i) *at++ = static_cast<char>(value >> (8 * i));
    m_bytes.setEnd(at);
  }
  void put(bool value) { m_bytes.put(value ? '\1' : '\0'); }
  void put(double value);
  void put(const QPointF& point);
  void put(const QRectF& rect);
  void put(const QUuid& id);
  void put(const QString& text);
  void put(TimePoint time) { putFixed(static_cast<std::uint64_t>(time.time_since_epoch().count()), 8); }

  // Valid until the next call.
  QByteArrayView bytes() const { return m_bytes.text(); }
  QByteArray take() { return m_bytes.take(); }
  // Forgets the bytes but keeps their memory.
  void clear() { m_bytes.clear(); }

 private:
  static constexpr qsizetype maxNumberLength = 10;

  Texts m_texts;
  ByteBuffer m_bytes;
  QHash<QString, std::uint64_t> m_pool;
};

// Reads the values back. Throws JournalError if the bytes end early or contain what the writer never writes.
class ByteReader {
 public:
  explicit ByteReader(QByteArrayView bytes) : m_bytes(bytes) {}

  bool atEnd() const { return m_at == m_bytes.size(); }
  std::uint64_t takeNumber();
  std::uint64_t takeFixed(int bytes);

  void take(bool& value);
  void take(double& value);
  void take(QPointF& point);
  void take(QRectF& rect);
  void take(QUuid& id);
  void take(QString& text);
  void take(TimePoint& time);
  QByteArrayView takeBytes(std::uint64_t count) { return next(count); }

 private:
  QByteArrayView next(std::uint64_t count);

  QByteArrayView m_bytes;
  qsizetype m_at = 0;
  std::vector<QString> m_pool;
};

[[noreturn]] void failReading();

// A fast hash to tell contents apart; does not resist deliberate collisions.
std::uint64_t hashOf(QByteArrayView bytes, std::uint64_t seed = 0);

}  // namespace quilmora::journal
