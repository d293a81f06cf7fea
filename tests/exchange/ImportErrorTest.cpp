#include <gtest/gtest.h>

#include "exchange/ImportError.h"
#include "support/QtPrinters.h"

namespace quilmora {
namespace {

TEST(ImportError, TellsWhatWentWrong) {
  EXPECT_EQ(ImportError::parseError(QStringLiteral("line 3: Premature end of document.")).message(),
            QStringLiteral("line 3: Premature end of document."));
  EXPECT_EQ(ImportError::parseError(QString()).message(), QStringLiteral("Unknown XML parsing error"));
  EXPECT_EQ(ImportError::invalidData().message(),
            QStringLiteral("the file is not UTF-8 text; save it as UTF-8 and import it again"));
  EXPECT_EQ(ImportError::unsupportedFormat().message(), QStringLiteral("this kind of file cannot be imported"));
}

TEST(ImportError, KnowsItsCase) {
  EXPECT_EQ(ImportError::parseError(QString()).kind(), ImportError::Case::parseError);
  EXPECT_EQ(ImportError::invalidData().kind(), ImportError::Case::invalidData);
  EXPECT_EQ(ImportError::unsupportedFormat().kind(), ImportError::Case::unsupportedFormat);
}

}  // namespace
}  // namespace quilmora
