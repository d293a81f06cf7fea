#pragma once

#include <vector>

#include "app/dialogs/Sheet.h"
#include "editor/versions/VersionStore.h"

class QPushButton;
class QScrollArea;
class QVBoxLayout;

namespace quilmora {

class VersionRow;

// Lists the earlier versions of the open document, and asks which one to open, next to it or in its place.
class EarlierVersionsSheet final : public Sheet {
  Q_OBJECT

 public:
  EarlierVersionsSheet(const Look& look, const QString& documentName, QWidget* window);

  // Called once they are known, newest first.
  void setVersions(const std::vector<versions::Version>& versions, const QDateTime& now);
  void setPicture(std::uint64_t number, const QImage& picture);
  const std::vector<VersionRow*>& rows() const { return m_rows; }
  QPushButton& besideButton() const { return *m_beside; }
  QPushButton& inPlaceButton() const { return *m_inPlace; }

 Q_SIGNALS:
  void besideWanted(std::uint64_t number);
  void inPlaceWanted(std::uint64_t number);

 private:
  void addHead(const QString& documentName);
  void addButtons();
  void refresh();
  std::optional<std::uint64_t> chosen() const;

  QScrollArea* m_scroll;
  QVBoxLayout* m_list;
  QWidget* m_empty;
  QPushButton* m_beside = nullptr;
  QPushButton* m_inPlace = nullptr;
  QPushButton* m_close = nullptr;
  std::vector<VersionRow*> m_rows;
  std::vector<std::uint64_t> m_numbers;
};

// The time of a version as shown: "Today, 14:05", "Yesterday, 09:12", "Friday, 6 March 2026, 18:30".
QString versionTime(const QDateTime& time, const QDateTime& now);

}  // namespace quilmora
