#pragma once

#include <QByteArray>

#include "editor/journal/Bytes.h"
#include "model/MindMap.h"

namespace quilmora::journal {

// The difference between two maps as bytes; empty if there is none. Takes time for what differs and for the list of
// blocks, not for the whole map.
QByteArray deltaBetween(const MindMap& before, const MindMap& now);

// The map that results from the delta. Shares the blocks that the delta leaves alone. Throws JournalError if the bytes
// are not a delta of this map; `before` stays as it is.
MindMap appliedDelta(const MindMap& before, QByteArrayView delta);

// All the records of a block, and back; for code that stores maps in blocks.
template <class Record>
QByteArray bytesOfBlock(const std::vector<Record>& block);
// Throws JournalError. Appends.
template <class Record>
void readBlock(QByteArrayView bytes, SharedArray<Record>& records);
// The map without its records.
QByteArray bytesOfHead(const MindMap& map);
void readHead(QByteArrayView bytes, MindMap& map);

}  // namespace quilmora::journal
