#pragma once

#include <cstdint>
#include <functional>
#include <stop_token>

#include <QString>

#include "exchange/PictureScene.h"

namespace quilmora {

// How a picture is cut into parts that are painted one at a time. The picture is the same however it is cut.
struct PictureParts {
  std::int64_t pixelCount = 4LL * 1024 * 1024;  // of one part, roughly
  int maxWidth = 16384;                         // a wider picture is cut into columns, too
  int columnWidth = 8192;
  std::int64_t bandPixelCount = 1LL << 32;  // maximum of a band of such a wide picture
  int threads = 0;                          // 0 means as many as are worth using
};

enum class PictureStreamEnd {
  done,
  stopped,    // by the stop token or by the sink
  notDrawn,   // out of memory or threads
  outOfRoom,  // no room in the folder for waiting data
};

// Paints a picture in parts and passes its rows on as one stream in the zlib format: 8 bit red, green and blue, each
// row preceded by the number of its PNG filter. Memory does not grow with the picture. `take` receives the stream in
// pieces and returns false to stop; `progress` receives the share done; both run in the calling thread. If much data
// has to wait for its turn, it goes into an unnamed file in `folder`.
PictureStreamEnd streamPicture(const PictureScene& scene, const QString& folder,
                               const std::function<bool(const char*, qsizetype)>& take,
                               const std::function<void(double)>& progress = {}, const std::stop_token& stop = {},
                               const PictureParts& parts = {});

}  // namespace quilmora
