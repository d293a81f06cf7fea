#pragma once

#include <cstdint>
#include <functional>
#include <stop_token>

#include <QString>

#include "exchange/PictureScene.h"

namespace quilmora {

// How a picture is cut into the parts that are painted at a time. The picture is the same however it is cut.
struct PictureParts {
  std::int64_t pixelCount = 4LL * 1024 * 1024;  // roughly, of one part
  int maxWidth = 16384;                         // a wider picture is cut into columns, too
  int columnWidth = 8192;
  std::int64_t bandPixelCount = 1LL << 32;  // of a band of such a wide picture, at most
  int threads = 0;                          // 0 means as many as are worth having
};

enum class PictureStreamEnd {
  done,
  stopped,    // by the stop token or by the sink
  notDrawn,   // for want of memory or of a thread
  outOfRoom,  // in the folder for what has to wait
};

// Paints a picture part by part and hands its rows on as one stream in the zlib format: 8 bit red, green and blue, each
// row behind the number of its PNG filter. Memory does not grow with the picture. `take` receives the stream piece by
// piece and returns false to stop; `progress` receives the share done; both run in the calling thread. When much has to
// wait for its turn it goes into an unnamed file in `folder`.
PictureStreamEnd streamPicture(const PictureScene& scene, const QString& folder,
                               const std::function<bool(const char*, qsizetype)>& take,
                               const std::function<void(double)>& progress = {}, const std::stop_token& stop = {},
                               const PictureParts& parts = {});

}  // namespace quilmora
