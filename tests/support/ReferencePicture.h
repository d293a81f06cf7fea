#pragma once

#include <QImage>
#include <QString>
#include <gtest/gtest.h>

namespace quilmora::test {

// Whether a picture equals tests/pictures/NAME.png; channels may differ by `tolerance`. If not, the picture and one
// with the differing pixels in red are written to the build's folder `differences`. With QUILMORA_REBASELINE set in the
// environment, the picture is stored as the reference instead.
testing::AssertionResult isReference(const QImage& picture, const QString& name, int tolerance = 2);

}  // namespace quilmora::test
