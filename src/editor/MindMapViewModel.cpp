#include "editor/MindMapViewModel.h"

#include "platform/Bookmarks.h"

namespace quilmora {

MindMapViewModel::MindMapViewModel(MindMap map, EditorServices services)
    : EditorNavigation(std::move(map)), m_services(services) {}

MindMapViewModel::~MindMapViewModel() {
  if (m_heldScopedPath) m_services.bookmarks.stopAccess(*m_heldScopedPath);
}

void MindMapViewModel::stamp(MindMap& map) const {
  map.updatedAt = m_services.clock.now();
}

}  // namespace quilmora
