#pragma once

#include <QByteArray>

#include "editor/journal/Bytes.h"
#include "model/MindMap.h"

namespace quilmora::journal {

// What leads from one map to another, as bytes; empty where nothing does. Takes time for what differs and for the list
// of blocks, not for the map.
QByteArray deltaBetween(const MindMap& before, const MindMap& now);

// The map that the delta leads to. Shares the blocks that it leaves alone. Throws JournalError where the bytes are no
// delta of this map; `before` then stands as it is.
MindMap appliedDelta(const MindMap& before, QByteArrayView delta);

// All the records of a block, and back; for those who keep maps by blocks.
template <class Record>
QByteArray bytesOfBlock(const std::vector<Record>& block);
// Throws JournalError. Appends.
template <class Record>
void readBlock(QByteArrayView bytes, SharedArray<Record>& records);
// The map without its records.
QByteArray bytesOfHead(const MindMap& map);
void readHead(QByteArrayView bytes, MindMap& map);

}  // namespace quilmora::journal
