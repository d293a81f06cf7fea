#include "exchange/PdfWriter.h"

#include <algorithm>
#include <cmath>

#include "platform/FileWriter.h"

namespace quilmora {

namespace {

// The largest side of a page, in its units.
constexpr double maxPageSide = 14400.0;
// Offsets have ten digits in a PDF file.
constexpr qint64 maxFileSize = 9'999'999'999;

// Without an exponent, which PDF does not allow.
QByteArray number(double value) {
  QByteArray text = QByteArray::number(value, 'f', 6);
  while (text.endsWith('0')) text.chop(1);
  if (text.endsWith('.')) text.chop(1);
  return text;
}

}  // namespace

bool PdfWriter::write(const QByteArray& text) {
  m_written += text.size();
  return m_written <= maxFileSize && m_file.append(text.constData(), text.size());
}

bool PdfWriter::beginObject() {
  m_objects.push_back(m_written);
  return write(QByteArray::number(static_cast<qint64>(m_objects.size())) + " 0 obj\n");
}

bool PdfWriter::begin() {
  const double unit = std::max(1.0, std::ceil(std::max(m_page.width(), m_page.height()) / maxPageSide));
  const QByteArray width = number(m_page.width() / unit);
  const QByteArray height = number(m_page.height() / unit);
  const QByteArray userUnit = unit > 1.0 ? " /UserUnit " + number(unit) : QByteArray();
  const QByteArray contents = "q\n" + width + " 0 0 " + height + " 0 0 cm\n/Picture Do\nQ\n";
  const QByteArray columns = QByteArray::number(m_size.width);
  const QByteArray rows = QByteArray::number(m_size.height);
  // The bytes after the first line mark the file as binary.
  return write("%PDF-1.6\n%\xE2\xE3\xCF\xD3\n") && beginObject() &&
         write("<< /Type /Catalog /Pages 2 0 R >>\nendobj\n") && beginObject() &&
         write("<< /Type /Pages /Kids [3 0 R] /Count 1 >>\nendobj\n") && beginObject() &&
         write("<< /Type /Page /Parent 2 0 R /MediaBox [0 0 " + width + ' ' + height + ']' + userUnit +
               " /Resources << /XObject << /Picture 5 0 R >> >> /Contents 4 0 R >>\nendobj\n") &&
         beginObject() &&
         write("<< /Length " + QByteArray::number(contents.size()) + " >>\nstream\n" + contents +
               "endstream\nendobj\n") &&
         beginObject() &&
         write("<< /Type /XObject /Subtype /Image /Width " + columns + " /Height " + rows +
               " /ColorSpace /DeviceRGB /BitsPerComponent 8 /Filter /FlateDecode /DecodeParms "
               "<< /Predictor 15 /Colors 3 /BitsPerComponent 8 /Columns " +
               columns + " >> /Length 6 0 R >>\nstream\n");
}

bool PdfWriter::take(const char* data, qsizetype size) {
  m_written += size;
  m_pictureLength += size;
  return m_written <= maxFileSize && m_file.append(data, size);
}

bool PdfWriter::finish() {
  if (!write("\nendstream\nendobj\n") || !beginObject() || !write(QByteArray::number(m_pictureLength) + "\nendobj\n"))
    return false;
  const qint64 table = m_written;
  const QByteArray count = QByteArray::number(static_cast<qint64>(m_objects.size()) + 1);
  QByteArray text = "xref\n0 " + count + "\n0000000000 65535 f \n";
  for (const qint64 place : m_objects) text += QByteArray::number(place).rightJustified(10, '0') + " 00000 n \n";
  text += "trailer\n<< /Size " + count + " /Root 1 0 R >>\nstartxref\n" + QByteArray::number(table) + "\n%%EOF\n";
  return write(text);
}

}  // namespace quilmora
