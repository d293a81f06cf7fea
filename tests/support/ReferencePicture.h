#pragma once

#include <QImage>
#include <QString>
#include <gtest/gtest.h>

namespace quilmora::test {

// Whether a picture is the one that is kept as tests/pictures/NAME.png; channels may differ by `tolerance`. Where it is
// not, the picture and one of the differing pixels (in red) are written to the build's folder `differences`. With
// QUILMORA_REBASELINE set in the environment the picture is kept as the reference instead.
testing::AssertionResult isReference(const QImage& picture, const QString& name, int tolerance = 2);

}  // namespace quilmora::test
