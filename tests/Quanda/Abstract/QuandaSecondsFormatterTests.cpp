#include <gtest/gtest.h>
#include <unicode/locid.h>

#include <cmath>
#include <cstdlib>
#include <limits>

#include "Quanda/Abstract/QuandaAbstractRealTimeOfDay.h"
#include "Quanda/Abstract/QuandaSecondsFormatter.h"

namespace {

TEST(QuandaSecondsFormatter, WritesTwoIntegerAndSixFractionDigitsInTheLocale) {
  struct Case {
    double seconds;
    std::string_view english, german, arabic;
  };
  const Case cases[] = {
      {5.5, "05.500000", "05,500000", "٠٥٫٥٠٠٠٠٠"},
      {9.0, "09.000000", "09,000000", "٠٩٫٠٠٠٠٠٠"},
      {30.1234567, "30.123456", "30,123456", "٣٠٫١٢٣٤٥٦"},
      {59.99999999999999, "59.999999", "59,999999", "٥٩٫٩٩٩٩٩٩"},
  };
  const QuandaSecondsFormatter english("en_US"), german("de_DE"), arabic("ar_EG");
  for (const Case& c : cases) {
    EXPECT_EQ(english.format(c.seconds), c.english);
    EXPECT_EQ(german.format(c.seconds), c.german);
    EXPECT_EQ(arabic.format(c.seconds), c.arabic);
  }
  EXPECT_EQ(QuandaSecondsFormatter("ar_EG@numbers=latn").format(5.5), "05.500000");
}

TEST(QuandaSecondsFormatter, ClampsWhatTheFixedWidthCannotHold) {
  const QuandaSecondsFormatter formatter("en_US");
  EXPECT_EQ(formatter.format(123.456), "59.999999");  // not "23.456000"
  EXPECT_EQ(formatter.format(-5.5), "00.000000");
  EXPECT_EQ(formatter.format(-0.0), "00.000000");
  EXPECT_EQ(formatter.format(-0.0000001), "00.000000");
  EXPECT_EQ(formatter.format(std::numeric_limits<double>::infinity()), "59.999999");
  EXPECT_EQ(formatter.format(std::numeric_limits<double>::quiet_NaN()), "");
  std::string text = "12:34:";
  formatter.appendFormatted(5.25, text);
  EXPECT_EQ(text, "12:34:05.250000");
}

// The shared formatter follows the process's default locale as it is on first use. Each process
// builds it once, so the check runs in a child process of its own, which sets a German default
// before any time of day is written.
TEST(QuandaSecondsFormatterDeathTest, SharedFormatterUsesTheDefaultLocale) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        UErrorCode status = U_ZERO_ERROR;
        icu::Locale::setDefault(icu::Locale("de_DE"), status);
        const auto time = QuandaAbstractRealTimeOfDay::make(7, 8, 5.5).value();
        std::exit(time.serializeToIso8601String() == "07:08:05,500000" &&
                          QuandaSecondsFormatter::shared().format(1.0) == "01,000000"
                      ? 0
                      : 1);
      },
      testing::ExitedWithCode(0), "");
}

}  // namespace
